#include "KeloSparkle/engine/Appcast.h"

#include "KeloSparkle/engine/NotesText.h"

#include <QDeadlineTimer>
#include <QXmlStreamReader>

namespace kelo {

namespace {

constexpr std::size_t mostItems = 1000;
constexpr int deepest = 32;
constexpr qsizetype pieceBytes = 16 * 1024;
// Tags have a price that grows with the square of their attributes.
constexpr int mostPiecesOfAToken = 8;
constexpr std::chrono::seconds patience(5);
const QString sparkle = QStringLiteral("http://www.andymatuschak.org/xml-namespaces/sparkle");

/// Reads one document from its start to its end, once.
class AppcastReader final
{
public:
    std::optional<std::vector<AppcastItem>> read(const QByteArray &xml)
    {
        const QDeadlineTimer deadline(patience);
        int piecesOfAToken = 0;
        for (qsizetype at = 0; at < xml.size() && m_isFine; at += pieceBytes) {
            if (m_xml.tokenType() == QXmlStreamReader::EndDocument)
                return xml.mid(at).trimmed().isEmpty() ? result() : std::nullopt;
            m_xml.addData(xml.mid(at, pieceBytes));
            piecesOfAToken = readPiece() ? 0 : piecesOfAToken + 1;
            m_isFine = m_isFine && piecesOfAToken < mostPiecesOfAToken && !deadline.hasExpired();
        }
        return result();
    }

private:
    std::optional<std::vector<AppcastItem>> result()
    {
        if (!m_isFine || !m_xml.atEnd() || m_xml.hasError() || !m_hasChannel)
            return std::nullopt;
        return std::move(m_items);
    }

    /// Whether a token ended in it.
    bool readPiece()
    {
        bool hasToken = false;
        while (m_isFine && !m_xml.atEnd()) {
            const auto token = m_xml.readNext();
            if (m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError)
                break;
            m_isFine = !m_xml.hasError();
            hasToken = true;
            handle(token);
        }
        return hasToken;
    }

    void handle(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            m_isFine = false;
            break;
        case QXmlStreamReader::StartElement:
            start();
            break;
        case QXmlStreamReader::Characters:
            if (m_depth == itemDepth + 1)
                m_text += m_xml.text();
            break;
        case QXmlStreamReader::EndElement:
            end();
            break;
        default:
            break;
        }
    }

    void start()
    {
        ++m_depth;
        const auto name = m_xml.name();
        if (m_depth == 1)
            m_isFine = name == QLatin1String("rss");
        else if (m_depth == 2 && name == QLatin1String("channel"))
            m_hasChannel = true;
        else if (m_depth == itemDepth)
            startItem();
        else if (m_depth == itemDepth + 1)
            startField();
        if (m_depth > deepest || m_items.size() > mostItems)
            m_isFine = false;
    }

    void startItem()
    {
        m_isInItem = isPlain() && m_xml.name() == QLatin1String("item");
        if (m_isInItem)
            m_items.emplace_back();
    }

    void startField()
    {
        m_text.clear();
        m_format = attribute("format");
        if (!m_isInItem || !isPlain() || m_xml.name() != QLatin1String("enclosure"))
            return;
        AppcastItem &item = m_items.back();
        const auto attributes = m_xml.attributes();
        item.url = attributes.value(QLatin1String("url")).toString();
        item.length = attributes.value(QLatin1String("length")).toString();
        item.signature = attribute("edSignature");
        item.os = attribute("os");
        // Older feeds have the versions here.
        takeUnlessEmpty(item.version, attribute("version"));
        takeUnlessEmpty(item.shortVersion, attribute("shortVersionString"));
    }

    void end()
    {
        if (m_depth == itemDepth + 1 && m_isInItem)
            endField();
        if (m_depth == itemDepth)
            m_isInItem = false;
        --m_depth;
    }

    void endField()
    {
        AppcastItem &item = m_items.back();
        const auto name = m_xml.name();
        const QString text = m_text.trimmed();
        if (isPlain()) {
            if (name == QLatin1String("description"))
                item.notes = m_format == QLatin1String("plain-text") ? plainNotes(text) : notesOfMarkup(text);
        } else if (m_xml.namespaceUri() != sparkle) {
            return;
        } else if (name == QLatin1String("version")) {
            takeUnlessEmpty(item.version, text);
        } else if (name == QLatin1String("shortVersionString")) {
            takeUnlessEmpty(item.shortVersion, text);
        } else if (name == QLatin1String("minimumSystemVersion")) {
            item.minimumSystemVersion = text;
        } else if (name == QLatin1String("channel")) {
            item.channel = text;
        }
    }

    /// Whether the element is RSS's own, which has no namespace.
    bool isPlain() const { return m_xml.namespaceUri().isEmpty(); }

    static void takeUnlessEmpty(QString &field, const QString &value)
    {
        if (!value.isEmpty())
            field = value;
    }

    QString attribute(const char *name) const
    {
        return m_xml.attributes().value(sparkle, QLatin1String(name)).toString();
    }

    /// rss, channel, item.
    static constexpr int itemDepth = 3;

    QXmlStreamReader m_xml;
    std::vector<AppcastItem> m_items;
    int m_depth = 0;
    bool m_isFine = true;
    bool m_hasChannel = false;
    bool m_isInItem = false;
    QString m_text;
    QString m_format;
};

} // namespace

std::optional<std::vector<AppcastItem>> parseAppcast(const QByteArray &xml)
{
    return AppcastReader().read(xml);
}

} // namespace kelo
