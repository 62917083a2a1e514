#include "Translations/InstallTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

// Resources of a static library are found only when somebody asks for them, and not from within a namespace.
static void registerTranslations()
{
    Q_INIT_RESOURCE(mivora_translations);
}

namespace mivora {

namespace {

constexpr char ownName[] = "mivora-translation";

QTranslator *makeTranslator()
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    translator->setObjectName(QLatin1String(ownName));
    return translator;
}

void removeTranslations()
{
    // QTranslator uninstalls itself when it is deleted.
    qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator *>(QLatin1String(ownName),
                                                                         Qt::FindDirectChildrenOnly));
}

bool loadOwn(QTranslator &translator, const QLocale &locale)
{
    const auto folder = QStringLiteral(":/translations");
    return translator.load(locale, QStringLiteral("mivora"), QStringLiteral("_"), folder) ||
           translator.load(QStringLiteral("mivora_en"), folder);
}

/// What Qt itself says to the user, such as why a file can't be written.
void installQtTexts(const QLocale &locale)
{
    QTranslator *translator = makeTranslator();
    if (translator->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}

/// Whether messages are asked for in no language at all, as scripts do.
bool isMessageLocaleC()
{
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray name = qgetenv(variable);
        if (!name.isEmpty())
            return name == "C" || name == "POSIX" || name.startsWith("C.");
    }
    return true;
}

} // namespace

void installTranslations(const QLocale &locale)
{
    registerTranslations();
    removeTranslations();
    QTranslator *translator = makeTranslator();
    if (!loadOwn(*translator, locale))
        return;
    // Qt speaks English by itself, and nothing else where the program does.
    if (!translator->language().startsWith(QLatin1String("en")))
        installQtTexts(QLocale(translator->language()));
    QCoreApplication::installTranslator(translator);
}

void installTranslations()
{
    installTranslations(isMessageLocaleC() ? QLocale::c() : QLocale::system());
}

} // namespace mivora
