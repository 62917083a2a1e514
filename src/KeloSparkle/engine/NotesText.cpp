#include "KeloSparkle/engine/NotesText.h"

#include <QRegularExpression>
#include <QSet>
#include <libxml/HTMLparser.h>
#include <memory>

namespace kelo {

namespace {

constexpr qsizetype longestNotes = 20'000;

bool isUnwanted(QChar c)
{
    const bool isBlank = c == QLatin1Char('\n') || c == QLatin1Char('\t');
    // Directional overrides could make a text read as another one.
    const bool isOverride =
        (c >= QChar(0x202a) && c <= QChar(0x202e)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
    return isOverride || c == QChar::ObjectReplacementCharacter ||
           (c.category() == QChar::Other_Control && !isBlank);
}

/// Writes down what a person reads, as libxml2 meets it. No tree is built and no style is computed: markup
/// has many ways to ask for enormous ones.
class MarkupReader final
{
public:
    QString read(const QByteArray &html)
    {
        htmlSAXHandler handler{};
        handler.startElement = [](void *self, const xmlChar *name, const xmlChar **) {
            static_cast<MarkupReader *>(self)->start(nameOf(name));
        };
        handler.endElement = [](void *self, const xmlChar *name) {
            static_cast<MarkupReader *>(self)->end(nameOf(name));
        };
        handler.characters = handler.ignorableWhitespace = [](void *self, const xmlChar *text, int size) {
            const QString decoded = QString::fromUtf8(reinterpret_cast<const char *>(text), size);
            static_cast<MarkupReader *>(self)->add(decoded);
        };
        // Scripts and style sheets, which would be characters otherwise.
        handler.cdataBlock = [](void *, const xmlChar *, int) {};
        const std::unique_ptr<htmlParserCtxt, decltype(&htmlFreeParserCtxt)> parser(
            htmlCreatePushParserCtxt(&handler, this, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8),
            htmlFreeParserCtxt);
        if (parser) {
            htmlCtxtUseOptions(parser.get(), HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC | HTML_PARSE_NOERROR |
                                                 HTML_PARSE_NOWARNING);
            htmlParseChunk(parser.get(), html.constData(), int(html.size()), 1);
        }
        return m_text;
    }

private:
    static QByteArray nameOf(const xmlChar *name) { return reinterpret_cast<const char *>(name); }

    static bool isLine(const QByteArray &name)
    {
        static const QSet<QByteArray> names{"ul", "ol", "li", "div", "table", "tr", "dt", "dd"};
        return names.contains(name);
    }

    static bool isParagraph(const QByteArray &name)
    {
        static const QSet<QByteArray> names{"p", "h1", "h2", "h3", "h4", "h5", "h6", "blockquote", "pre"};
        return names.contains(name);
    }

    void start(const QByteArray &name)
    {
        if (name == "br")
            breakLine();
        else if (isLine(name))
            beginLine();
        else if (isParagraph(name))
            beginParagraph();
        if (name == "li")
            m_text += QStringLiteral("• ");
        else if (name == "pre")
            ++m_preformatted;
    }

    void end(const QByteArray &name)
    {
        if (name == "pre")
            --m_preformatted;
        m_endsLine = m_endsLine || isLine(name) || isParagraph(name);
    }

    void add(const QString &text)
    {
        for (const QChar c : text) {
            if (m_preformatted > 0) {
                m_text += c;
            } else if (c.isSpace()) {
                m_hasGap = true;
            } else {
                put(c);
            }
        }
    }

    void put(QChar c)
    {
        if (std::exchange(m_endsLine, false))
            beginLine();
        if (std::exchange(m_hasGap, false) && !m_text.isEmpty() && !m_text.back().isSpace())
            m_text += QLatin1Char(' ');
        m_text += c;
    }

    void beginLine()
    {
        if (!m_text.isEmpty() && m_text.back() != QLatin1Char('\n') && !m_text.endsWith(QStringLiteral("• ")))
            breakLine();
    }

    void breakLine()
    {
        m_text += QLatin1Char('\n');
        m_hasGap = false;
        m_endsLine = false;
    }

    void beginParagraph()
    {
        beginLine();
        if (m_text.endsWith(QLatin1Char('\n')) && !m_text.endsWith(QStringLiteral("\n\n")))
            breakLine();
    }

    QString m_text;
    int m_preformatted = 0;
    bool m_hasGap = false;
    bool m_endsLine = false;
};

} // namespace

QString plainNotes(const QString &text)
{
    QString notes = text.left(longestNotes);
    notes.removeIf(isUnwanted);
    // Or else the text could hide below the empty lines.
    static const QRegularExpression gap(QStringLiteral("\n[ \t]*(\n[ \t]*)+\n"));
    notes.replace(gap, QStringLiteral("\n\n"));
    return notes.trimmed();
}

QString notesOfMarkup(const QString &html)
{
    if (!html.contains(QLatin1Char('<')) && !html.contains(QLatin1Char('&')))
        return plainNotes(html);
    return plainNotes(MarkupReader().read(html.left(longestNotes).toUtf8()));
}

} // namespace kelo
