#include "KeloSparkle/tool/AppcastItemWriter.h"

#include <QXmlStreamWriter>

namespace kelo {

namespace {

const QString sparkle = QStringLiteral("http://www.andymatuschak.org/xml-namespaces/sparkle");

void writeEnclosure(QXmlStreamWriter &xml, const Release &release)
{
    xml.writeEmptyElement(QStringLiteral("enclosure"));
    xml.writeAttribute(QStringLiteral("url"), release.url);
    xml.writeAttribute(QStringLiteral("length"), QString::number(release.length));
    xml.writeAttribute(QStringLiteral("type"), QStringLiteral("application/octet-stream"));
    xml.writeAttribute(QStringLiteral("sparkle:edSignature"), release.signature);
}

void writeItem(QXmlStreamWriter &xml, const Release &release)
{
    xml.writeStartElement(QStringLiteral("item"));
    xml.writeTextElement(QStringLiteral("title"), release.version);
    xml.writeTextElement(QStringLiteral("pubDate"), release.published.toString(Qt::RFC2822Date));
    xml.writeTextElement(QStringLiteral("sparkle:version"), release.version);
    if (!release.minimumSystem.isEmpty())
        xml.writeTextElement(QStringLiteral("sparkle:minimumSystemVersion"), release.minimumSystem);
    if (!release.notes.isEmpty()) {
        xml.writeStartElement(QStringLiteral("description"));
        xml.writeAttribute(QStringLiteral("sparkle:format"), QStringLiteral("plain-text"));
        xml.writeCharacters(release.notes);
        xml.writeEndElement();
    }
    writeEnclosure(xml, release);
    xml.writeEndElement();
}

} // namespace

QString appcastItem(const Release &release)
{
    // The item alone has no declaration of the prefix: that is the feed's.
    QString text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    writeItem(xml, release);
    return text.trimmed() + QLatin1Char('\n');
}

QString appcast(const QString &title, const QString &items)
{
    return QStringLiteral(
               "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\" xmlns:sparkle=\"%1\">\n"
               "<channel>\n<title>%2</title>\n")
               .arg(sparkle, title.toHtmlEscaped()) +
           items + QStringLiteral("</channel>\n</rss>\n");
}

} // namespace kelo
