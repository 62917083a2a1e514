#include "Platform/linux/IniDocument.h"

#include <QStringList>
#include <algorithm>
#include <cctype>

namespace mivora {

namespace {

constexpr char byteOrderMark[] = "\xef\xbb\xbf";

QByteArrayList linesOf(const QByteArray &text)
{
    QByteArrayList lines;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype newline = text.indexOf('\n', start);
        const qsizetype end = newline < 0 ? text.size() : newline + 1;
        lines.append(text.mid(start, end - start));
        start = end;
    }
    return lines;
}

/// QSettings writes all but ASCII letters, digits and "_-." of a key as %XX or %UXXXX.
QByteArray encodedKey(const QString &key)
{
    QByteArray result;
    for (const QChar character : key) {
        const ushort code = character.unicode();
        if (code < 0x80 && (std::isalnum(code) || QLatin1String("_-.").contains(character)))
            result += char(code);
        else if (code <= 0xff)
            result += '%' + QByteArray::number(code, 16).rightJustified(2, '0').toUpper();
        else
            result += "%U" + QByteArray::number(code, 16).rightJustified(4, '0').toUpper();
    }
    return result;
}

QString decodedKey(const QByteArray &text)
{
    QString result;
    const QString encoded = QString::fromUtf8(text);
    for (qsizetype at = 0; at < encoded.size();) {
        const bool isLong = encoded.mid(at, 2) == QLatin1String("%U");
        const qsizetype prefix = isLong ? 2 : 1;
        const QString digits = encoded.mid(at + prefix, isLong ? 4 : 2);
        bool valid = encoded.at(at) == QLatin1Char('%') && digits.size() == (isLong ? 4 : 2);
        const ushort code = valid ? digits.toUShort(&valid, 16) : 0;
        result += valid ? QChar(code) : encoded.at(at);
        at += valid ? prefix + digits.size() : 1;
    }
    return result;
}

bool isComment(const QByteArray &line)
{
    return line.startsWith(';') || line.startsWith('#');
}

} // namespace

IniDocument::IniDocument(const QByteArray &text) : m_lines(linesOf(text))
{
    index();
}

void IniDocument::index()
{
    m_values.clear();
    m_places.clear();
    m_end.reset();
    m_inGeneral = true;
    for (qsizetype at = 0; at < m_lines.size(); ++at)
        indexLine(at);
}

void IniDocument::indexLine(qsizetype at)
{
    QByteArray line = m_lines.at(at);
    if (at == 0 && line.startsWith(byteOrderMark))
        line.remove(0, sizeof byteOrderMark - 1);
    line = line.trimmed();
    if (line.startsWith('[')) {
        m_inGeneral = line.compare("[General]", Qt::CaseInsensitive) == 0;
        if (m_inGeneral)
            m_end = at + 1;
        return;
    }
    const qsizetype equals = line.indexOf('=');
    if (!m_inGeneral || isComment(line) || equals <= 0)
        return;
    const QString key = decodedKey(line.left(equals).trimmed());
    m_values.insert(key, line.mid(equals + 1).trimmed());
    m_places.insert(key, at);
    m_end = at + 1;
}

void IniDocument::setValue(const QString &key, const QByteArray &value)
{
    const QByteArray line = encodedKey(key) + '=' + value + '\n';
    const QList<qsizetype> places = m_places.values(key);
    if (places.isEmpty())
        insert(line);
    else
        m_lines[*std::max_element(places.begin(), places.end())] = line;
    index();
}

void IniDocument::insert(const QByteArray &line)
{
    if (!m_lines.isEmpty() && !m_lines.last().endsWith('\n'))
        m_lines.last() += '\n';
    if (!m_end) {
        m_lines.append("[General]\n");
        m_end = m_lines.size();
    }
    m_lines.insert(*m_end, line);
}

void IniDocument::remove(const QString &key)
{
    QList<qsizetype> places = m_places.values(key);
    std::sort(places.begin(), places.end(), std::greater<>());
    for (const qsizetype place : places)
        m_lines.removeAt(place);
    index();
}

} // namespace mivora
