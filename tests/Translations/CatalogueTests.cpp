#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace {

struct Message
{
    QString source;
    QString translationType;
    QStringList translations;
    bool isNumerus = false;
};

Message readMessage(QXmlStreamReader &xml)
{
    Message message;
    message.isNumerus = xml.attributes().value(QLatin1String("numerus")) == QLatin1String("yes");
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source")) {
            message.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            message.translationType = xml.attributes().value(QLatin1String("type")).toString();
            if (!message.isNumerus)
                message.translations.append(xml.readElementText());
            else
                while (xml.readNextStartElement())
                    message.translations.append(xml.readElementText());
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

QList<Message> messagesOf(const char *language)
{
    QFile file(QStringLiteral(MIVORA_TRANSLATIONS "/mivora_%1.ts").arg(QLatin1String(language)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << language;
    QXmlStreamReader xml(&file);
    QList<Message> messages;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("message"))
            messages.append(readMessage(xml));
    }
    EXPECT_FALSE(xml.hasError()) << language << ": " << xml.errorString().toStdString();
    return messages;
}

/// What a translation must have as often as its source, sorted: placeholders, accelerators, line ends, and
/// names that are typed.
QStringList fixedParts(const QString &text)
{
    static const QRegularExpression part(
        QStringLiteral("%(?:\\d+|L?n)|&(?=\\S)|\\n|…|`[^`]*`|--[a-z]+|\\$[A-Z_]+|~/[^ ,;.]*|RFC.3339"));
    QStringList parts;
    for (auto match = part.globalMatch(text); match.hasNext();)
        parts.append(match.next().captured().replace(QChar::Nbsp, QLatin1Char(' ')));
    parts.sort();
    return parts;
}

class Catalogue : public testing::TestWithParam<const char *>
{
};

INSTANTIATE_TEST_SUITE_P(Languages, Catalogue, testing::Values("de", "fr", "en"),
                         [](const auto &info) { return std::string(info.param); });

} // namespace

TEST_P(Catalogue, isCompleteAndKeepsWhatIsFilledInAndTheTypographyOfTheLanguage)
{
    const std::map<std::string, QString> faults{
        // High punctuation has a no-break space before it, and quotation marks have them inside.
        {"fr", QStringLiteral("[^\u202f][?!;»]|[^\u00a0]:(?!/)|«[^\u202f]|'|\"")},
        {"de", QStringLiteral("'|\"|[^\u00a0]…")},
        {"en", QStringLiteral("'")}};
    const QRegularExpression fault(faults.at(GetParam()));
    const auto messages = messagesOf(GetParam());
    EXPECT_FALSE(messages.isEmpty());
    for (const Message &message : messages) {
        const std::string source = message.source.toStdString();
        EXPECT_EQ(message.translationType, QString()) << source;
        EXPECT_EQ(message.translations.size(), message.isNumerus ? 2 : 1) << source;
        for (const QString &translation : message.translations) {
            EXPECT_FALSE(translation.trimmed().isEmpty()) << source;
            EXPECT_EQ(fixedParts(translation), fixedParts(message.source)) << translation.toStdString();
            EXPECT_FALSE(translation.contains(fault)) << translation.toStdString();
        }
    }
}
