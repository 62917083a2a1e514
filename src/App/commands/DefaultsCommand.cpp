#include "App/commands/Commands.h"

#include "App/commands/Output.h"
#include "Platform/DefaultsStore.h"
#include "Preferences/Settings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace mivora {

namespace {

int complainOfKey(const QString &key)
{
    QStringList keys;
    for (const Setting &setting : allSettings())
        keys.append(setting.key);
    complain(
        CommandLineTexts::tr("KEY: expected one of %1, got \"%2\"").arg(keys.join(QLatin1String(", ")), key));
    return exitBadArguments;
}

/// Texts stand for themselves; everything else is JSON.
QByteArray printed(const QJsonValue &value)
{
    if (value.isString())
        return value.toString().toUtf8();
    if (value.isArray())
        return QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    return value.toVariant().toString().toUtf8();
}

int list(const DefaultsStore &store)
{
    for (const Setting &setting : allSettings()) {
        const QJsonValue value = setting.readFrom(store);
        if (!value.isUndefined())
            print(QByteArray(setting.key.data(), setting.key.size()) + ' ' + printed(value) + '\n');
    }
    return exitDone;
}

int read(const Setting &setting, const DefaultsStore &store)
{
    const QJsonValue value = setting.readFrom(store);
    if (value.isUndefined()) {
        complain(CommandLineTexts::tr("%1 is not set").arg(setting.key));
        return exitCouldNot;
    }
    print(printed(value) + '\n');
    return exitDone;
}

/// What `text` stands for as a value of the setting; undefined when it is none.
QJsonValue valueFrom(const QString &text, QJsonValue::Type type)
{
    const QJsonValue none(QJsonValue::Undefined);
    if (type == QJsonValue::String)
        return text;
    if (type == QJsonValue::Bool) {
        const bool isTrue = text == QLatin1String("true");
        return isTrue || text == QLatin1String("false") ? QJsonValue(isTrue) : none;
    }
    if (type == QJsonValue::Double) {
        bool isNumber = false;
        const qint64 number = text.toLongLong(&isNumber);
        return isNumber ? QJsonValue(number) : none;
    }
    const QJsonDocument json = QJsonDocument::fromJson(text.toUtf8());
    const QJsonArray list = json.array();
    const bool isList =
        json.isArray() && std::ranges::all_of(list, [](const QJsonValue &v) { return v.isString(); });
    return isList ? QJsonValue(list) : none;
}

QString expectedForm(const Setting &setting)
{
    if (!setting.choices.isEmpty())
        return CommandLineTexts::tr("one of %1").arg(setting.choices.join(QLatin1String(", ")));
    if (setting.type == QJsonValue::Bool)
        return CommandLineTexts::tr("true or false");
    if (setting.type == QJsonValue::Double)
        return CommandLineTexts::tr("a whole number");
    return CommandLineTexts::tr("a JSON array of strings");
}

int write(const Setting &setting, const QString &text, DefaultsStore &store)
{
    const QJsonValue value = valueFrom(text, setting.type);
    if (value.isUndefined()) {
        complain(CommandLineTexts::tr("VALUE of %1: expected %2, got \"%3\"")
                     .arg(setting.key, expectedForm(setting), text));
        return exitBadArguments;
    }
    store.setValue(setting.key, value);
    // The store keeps what it is given; what it is read as is the program's matter.
    if (!setting.choices.isEmpty() && !setting.choices.contains(text))
        complain(CommandLineTexts::tr("%1 knows only %2; \"%3\" is kept, but read as %4")
                     .arg(setting.key, setting.choices.join(QLatin1String(", ")), text,
                          setting.registeredDefault.toVariant().toString()));
    return exitDone;
}

int perform(const DefaultsRequest &request, DefaultsStore &store)
{
    using Action = DefaultsRequest::Action;
    if (request.action == Action::list)
        return list(store);
    const QString key = QString::fromStdString(request.key);
    const Setting *setting = settingNamed(key);
    // What another version has left behind can be removed as well.
    if (request.action == Action::remove && (setting || store.values().contains(key))) {
        store.setValue(key, QJsonValue::Undefined);
        return exitDone;
    }
    if (!setting)
        return complainOfKey(key);
    return request.action == Action::read ? read(*setting, store)
                                          : write(*setting, QString::fromStdString(request.value), store);
}

} // namespace

int runDefaults(const DefaultsRequest &request, DefaultsStore &store)
{
    bool failed = false;
    QObject context;
    QObject::connect(&store, &DefaultsStore::writeFailed, &context, [&failed](const QString &reason) {
        failed = true;
        complain(reason);
    });
    const int status = perform(request, store);
    return failed ? exitCouldNot : status;
}

} // namespace mivora
