#include "Platform/linux/IniValue.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <random>

using namespace mivora;

namespace {

/// QSettings in a file that has this one value, as it stands there.
class QSettingsFile
{
public:
    QVariant read(const QByteArray &value)
    {
        QFile file(newPath());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\nkey=" + value + '\n');
        file.close();
        return QSettings(file.fileName(), QSettings::IniFormat).value(QStringLiteral("key"));
    }

    QByteArray written(const QVariant &value)
    {
        QFile file(newPath());
        QSettings(file.fileName(), QSettings::IniFormat).setValue(QStringLiteral("key"), value);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().split('\n').value(1).mid(int(qstrlen("key=")));
    }

private:
    /// Another one each time: QSettings remembers what is in files.
    QString newPath() { return m_folder.filePath(QString::number(++m_files)); }

    QTemporaryDir m_folder;
    int m_files = 0;
};

/// Both must read what the other wrote.
template<typename T, typename Encode, typename Decode>
void expectSameToQSettings(const QList<T> &values, Encode encode, Decode decode)
{
    QSettingsFile other;
    for (const T &value : values) {
        const QByteArray ours = encode(value);
        const QByteArray theirs = other.written(QVariant::fromValue(value));
        EXPECT_FALSE(ours.contains('\n'));
        EXPECT_EQ(decode(ours), value) << ours.constData();
        EXPECT_EQ(other.read(ours).template value<T>(), value) << ours.constData();
        EXPECT_EQ(decode(theirs), value) << theirs.constData();
    }
}

QList<QStringList> trickyLists()
{
    return {
        {},
        {QString()},
        {QString(), QString()},
        {QStringLiteral("work")},
        {QStringLiteral("b"), QStringLiteral("a")},
        {QStringLiteral("one, two"), QStringLiteral("say \"no\""), QStringLiteral("line\nbreak\r\n")},
        {QStringLiteral("été"), QStringLiteral("会議"), QStringLiteral("🗓"), QStringLiteral("\u00a0")},
        {QStringLiteral(" blanks "), QStringLiteral("\ttabs\t"), QStringLiteral("in side")},
        {QStringLiteral("@Invalid()"), QStringLiteral("@@"), QStringLiteral("@")},
        {QStringLiteral("a;b"), QStringLiteral("#c"), QStringLiteral("d=e"), QStringLiteral("[f]")},
        {QStringLiteral("C:\\new\\"), QStringLiteral("\\x41"), QStringLiteral("%41")},
        {QStringLiteral("\x01") + QStringLiteral("9af"), QString(QChar(0)), QStringLiteral("\x7f")},
        {QStringLiteral("true"), QStringLiteral("12")},
    };
}

QString randomText(std::mt19937 &random)
{
    static const QString characters = QStringLiteral("aF09 \t\n\",;=\\@#[]()%xé会\x01\x1f");
    QString text;
    for (auto left = random() % 6; left > 0; --left)
        text += characters.at(qsizetype(random() % std::size_t(characters.size())));
    return text;
}

constexpr auto none = std::nullopt;

} // namespace

TEST(IniValue, isTheSameToQSettings)
{
    QList<QStringList> lists = trickyLists();
    std::mt19937 random(20240229);
    for (int count = 0; count < 300; ++count)
        lists.append(QStringList{randomText(random), randomText(random), randomText(random)});
    expectSameToQSettings(lists, ini::encodeStringList, ini::decodeStringList);

    QList<QString> strings;
    for (const QStringList &list : trickyLists())
        strings += list;
    expectSameToQSettings(strings, ini::encodeString, ini::decodeString);

    QByteArray everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += char(byte);
    expectSameToQSettings(QList<QByteArray>{"", R"({"keyCode":9,"modifiers":768})", everyByte},
                          ini::encodeData, ini::decodeData);
}

TEST(IniValue, textByHandIsReadByItsTypeOnly)
{
    const struct
    {
        const char *text;
        std::optional<bool> boolean;
        std::optional<qint64> integer;
        std::optional<QString> string;
    } rows[] = {
        {"true", true, none, QStringLiteral("true")},
        {"NO", false, none, QStringLiteral("NO")},
        {"\"false\"", false, none, QStringLiteral("false")},
        {"1", true, 1, QStringLiteral("1")},
        {"2", none, 2, QStringLiteral("2")},
        {"-7 ; a comment", none, -7, QStringLiteral("-7")},
        {"12abc", none, none, QStringLiteral("12abc")},
        {"1.5", none, none, QStringLiteral("1.5")},
        {"0x10", none, none, QStringLiteral("0x10")},
        {"9223372036854775808", none, none, QStringLiteral("9223372036854775808")},
        {"", none, none, QString()},
        {"@Point(1 2)", none, none, none},
        {"@ByteArray({}", none, none, none},
        {"\"not closed", none, none, none},
        {"ends with \\", none, none, none},
    };

    for (const auto &row : rows) {
        EXPECT_EQ(ini::decodeBoolean(row.text), row.boolean) << row.text;
        EXPECT_EQ(ini::decodeInteger(row.text), row.integer) << row.text;
        EXPECT_EQ(ini::decodeString(row.text), row.string) << row.text;
        EXPECT_EQ(ini::decodeStringList(row.text),
                  row.string ? std::optional(QStringList(*row.string)) : none);
        EXPECT_EQ(ini::decodeData(row.text), none) << row.text;
    }

    const std::pair<const char *, QStringList> lists[] = {
        {"zoom,teams ,  meet", {QStringLiteral("zoom"), QStringLiteral("teams"), QStringLiteral("meet")}},
        {"\"a, b\", c", {QStringLiteral("a, b"), QStringLiteral("c")}},
        {"a,", {QStringLiteral("a"), QString()}},
        {"@Invalid()", {}}};
    for (const auto &[text, items] : lists) {
        EXPECT_EQ(ini::decodeString(text), none) << text;
        EXPECT_EQ(ini::decodeStringList(text), items) << text;
    }
    EXPECT_EQ(ini::decodeData("@ByteArray({})"), QByteArray("{}"));
    EXPECT_EQ(ini::decodeString("@ByteArray({})"), none);
    EXPECT_EQ(ini::decodeStringList("@ByteArray({})"), none);
}
