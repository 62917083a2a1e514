#include "KeloSparkle/engine/NotesText.h"

#include <QTextDocument>
#include <algorithm>

namespace kelo {

namespace {

constexpr qsizetype longestNotes = 20'000;

/// Would otherwise read style sheets and pictures from the file system.
class InertDocument final : public QTextDocument
{
    QVariant loadResource(int, const QUrl &) override { return QByteArray(); }
};

bool isUnwanted(QChar c)
{
    const bool isBlank = c == QLatin1Char('\n') || c == QLatin1Char('\t');
    // Directional overrides could make a text read as another one.
    const bool isOverride =
        (c >= QChar(0x202a) && c <= QChar(0x202e)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
    return isOverride || c == QChar::ObjectReplacementCharacter ||
           (c.category() == QChar::Other_Control && !isBlank);
}

} // namespace

QString plainNotes(const QString &text)
{
    QString notes = text.left(longestNotes);
    notes.removeIf(isUnwanted);
    return notes.trimmed();
}

QString notesOfMarkup(const QString &html)
{
    if (!html.contains(QLatin1Char('<')) && !html.contains(QLatin1Char('&')))
        return plainNotes(html);
    InertDocument document;
    document.setHtml(html.left(longestNotes));
    return plainNotes(document.toPlainText());
}

} // namespace kelo
