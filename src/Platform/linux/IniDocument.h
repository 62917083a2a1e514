#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QString>
#include <optional>

namespace mivora {

/// The text of a settings file, changed one value at a time. Every other line stays byte for byte: comments,
/// other sections, and lines that make no sense.
///
/// The values are those of the section [General] and of the lines before any section; of two with the same
/// key the later one counts. Values are kept as they are written in the file.
class IniDocument
{
public:
    IniDocument() = default;
    explicit IniDocument(const QByteArray &text);

    QByteArray text() const { return m_lines.join(); }

    /// All values by key.
    const QMap<QString, QByteArray> &values() const { return m_values; }

    void setValue(const QString &key, const QByteArray &value);
    void remove(const QString &key);

private:
    /// Where values are found and where a new one goes.
    void index();
    void indexLine(qsizetype at);
    void insert(const QByteArray &line);

    /// Each with its line end.
    QByteArrayList m_lines;
    QMap<QString, QByteArray> m_values;
    QMultiMap<QString, qsizetype> m_places;
    /// The line before which a new value goes, when there is a section for it.
    std::optional<qsizetype> m_end;
    bool m_inGeneral = true;
};

} // namespace mivora
