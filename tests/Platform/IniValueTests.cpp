#include "Platform/linux/IniValue.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <random>

using namespace mivora;

namespace {

/// Keys in the order of the numbers.
QString keyOf(qsizetype number)
{
    return QStringLiteral("key%1").arg(number, 5, 10, QLatin1Char('0'));
}

/// What QSettings makes of values as they stand in a file.
QVariantList readByQSettings(const QByteArrayList &values)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("read.conf")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[General]\n");
    for (qsizetype number = 0; number < values.size(); ++number)
        file.write(keyOf(number).toLatin1() + '=' + values.at(number) + '\n');
    file.close();
    const QSettings settings(file.fileName(), QSettings::IniFormat);
    QVariantList result;
    for (qsizetype number = 0; number < values.size(); ++number)
        result.append(settings.value(keyOf(number)));
    return result;
}

/// The values as QSettings writes them into a file.
QByteArrayList writtenByQSettings(const QVariantList &values)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("written.conf")));
    {
        QSettings settings(file.fileName(), QSettings::IniFormat);
        for (qsizetype number = 0; number < values.size(); ++number)
            settings.setValue(keyOf(number), values.at(number));
    }
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArrayList lines = file.readAll().split('\n').mid(1, values.size());
    for (QByteArray &line : lines)
        line.remove(0, line.indexOf('=') + 1);
    return lines;
}

/// Both must read what the other wrote.
template<typename T, typename Encode, typename Decode>
void expectSameToQSettings(const QList<T> &values, Encode encode, Decode decode)
{
    QByteArrayList ours;
    QVariantList variants;
    for (const T &value : values) {
        ours.append(encode(value));
        variants.append(QVariant::fromValue(value));
    }
    const QByteArrayList theirs = writtenByQSettings(variants);
    const QVariantList readByThem = readByQSettings(ours);
    ASSERT_EQ(theirs.size(), values.size());
    for (qsizetype at = 0; at < values.size(); ++at) {
        EXPECT_FALSE(ours.at(at).contains('\n'));
        EXPECT_EQ(decode(ours.at(at)), values.at(at)) << ours.at(at).constData();
        EXPECT_EQ(readByThem.at(at).value<T>(), values.at(at)) << ours.at(at).constData();
        EXPECT_EQ(decode(theirs.at(at)), values.at(at)) << theirs.at(at).constData();
    }
}

const QList<QStringList> &trickyLists()
{
    static const QList<QStringList> lists{
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
    return lists;
}

QString randomText(std::mt19937 &random)
{
    static const QString characters = QStringLiteral("aF09 \t\n\",;=\\@#[]()%xé会\x01\x1f");
    QString text;
    for (auto left = random() % 6; left > 0; --left)
        text += characters.at(qsizetype(random() % std::size_t(characters.size())));
    return text;
}

struct HandWritten
{
    const char *text;
    std::optional<bool> boolean;
    std::optional<qint64> integer;
    std::optional<QString> string;
    std::optional<QStringList> list;
    std::optional<QByteArray> data;
};

class HandWrittenValue : public testing::TestWithParam<HandWritten>
{
};

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList list(std::initializer_list<const char *> items)
{
    QStringList result;
    for (const char *item : items)
        result.append(text(item));
    return result;
}

constexpr auto none = std::nullopt;

} // namespace

TEST(IniValue, listsAreTheSameToQSettings)
{
    QList<QStringList> lists = trickyLists();
    std::mt19937 random(20240229);
    for (int count = 0; count < 2000; ++count)
        lists.append(QStringList{randomText(random), randomText(random), randomText(random)});
    expectSameToQSettings(lists, ini::encodeStringList, ini::decodeStringList);
}

TEST(IniValue, stringsAreTheSameToQSettings)
{
    QList<QString> strings;
    for (const QStringList &list : trickyLists())
        strings += list;
    expectSameToQSettings(strings, ini::encodeString, ini::decodeString);
}

TEST(IniValue, dataIsTheSameToQSettings)
{
    QByteArray everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += char(byte);
    expectSameToQSettings(QList<QByteArray>{"", R"({"keyCode":9,"modifiers":768})", everyByte},
                          ini::encodeData, ini::decodeData);
}

TEST_P(HandWrittenValue, isReadByItsTypeOnly)
{
    const HandWritten &value = GetParam();
    EXPECT_EQ(ini::decodeBoolean(value.text), value.boolean);
    EXPECT_EQ(ini::decodeInteger(value.text), value.integer);
    EXPECT_EQ(ini::decodeString(value.text), value.string);
    EXPECT_EQ(ini::decodeStringList(value.text), value.list);
    EXPECT_EQ(ini::decodeData(value.text), value.data);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Texts, HandWrittenValue, testing::Values(
    HandWritten{"true", true, none, text("true"), list({"true"}), none},
    HandWritten{"NO", false, none, text("NO"), list({"NO"}), none},
    HandWritten{"\"false\"", false, none, text("false"), list({"false"}), none},
    HandWritten{"maybe", none, none, text("maybe"), list({"maybe"}), none},
    HandWritten{"1", true, 1, text("1"), list({"1"}), none},
    HandWritten{"2", none, 2, text("2"), list({"2"}), none},
    HandWritten{"-7 ; a comment", none, -7, text("-7"), list({"-7"}), none},
    HandWritten{"12abc", none, none, text("12abc"), list({"12abc"}), none},
    HandWritten{"1.5", none, none, text("1.5"), list({"1.5"}), none},
    HandWritten{"0x10", none, none, text("0x10"), list({"0x10"}), none},
    HandWritten{"9223372036854775808", none, none, text("9223372036854775808"), list({"9223372036854775808"}), none},
    HandWritten{"", none, none, text(""), list({""}), none},
    HandWritten{"zoom,teams ,  meet", none, none, none, list({"zoom", "teams", "meet"}), none},
    HandWritten{"\"a, b\", c", none, none, none, list({"a, b", "c"}), none},
    HandWritten{"a,", none, none, none, list({"a", ""}), none},
    HandWritten{"@Invalid()", none, none, none, list({}), none},
    HandWritten{"@ByteArray({})", none, none, none, none, QByteArray("{}")},
    HandWritten{"@ByteArray({}", none, none, none, none, none},
    HandWritten{"@Point(1 2)", none, none, none, none, none},
    HandWritten{"\"not closed", none, none, none, none, none},
    HandWritten{"ends with \\", none, none, none, none, none}));
// clang-format on
