#include "Platform/linux/IniValue.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <random>

using namespace mivora;

namespace {

/// One value in a file that QSettings reads or writes.
class SettingsFile
{
public:
    QVariant readByQSettings(const QByteArray &value) const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\nkey=" + value + "\nlast=kept\n");
        file.close();
        QSettings settings(path(), QSettings::IniFormat);
        EXPECT_EQ(settings.value(QStringLiteral("last")), QStringLiteral("kept")) << value.constData();
        return settings.value(QStringLiteral("key"));
    }

    QByteArray writtenByQSettings(const QVariant &value) const
    {
        QFile::remove(path());
        QSettings(path(), QSettings::IniFormat).setValue(QStringLiteral("key"), value);
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray start = "[General]\nkey=";
        const QByteArray content = file.readAll();
        EXPECT_TRUE(content.startsWith(start)) << content.constData();
        return content.mid(start.size()).trimmed();
    }

private:
    QString path() const { return m_folder.filePath(QStringLiteral("%1.conf").arg(m_number++)); }

    QTemporaryDir m_folder;
    // QSettings remembers files by their names, so that each gets its own.
    mutable int m_number = 0;
};

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

QStringList allOf(const QList<QStringList> &lists)
{
    QStringList all;
    for (const QStringList &list : lists)
        all += list;
    return all;
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
    const SettingsFile file;
    QList<QStringList> lists = trickyLists();
    std::mt19937 random(20240229);
    for (int count = 0; count < 300; ++count)
        lists.append(QStringList{randomText(random), randomText(random), randomText(random)});
    for (const QStringList &expected : lists) {
        const QByteArray ours = ini::encodeStringList(expected);
        EXPECT_FALSE(ours.contains('\n'));
        EXPECT_EQ(ini::decodeStringList(ours), expected) << ours.constData();
        EXPECT_EQ(file.readByQSettings(ours).toStringList(), expected) << ours.constData();
        const QByteArray theirs = file.writtenByQSettings(expected);
        EXPECT_EQ(ini::decodeStringList(theirs), expected) << theirs.constData();
    }
}

TEST(IniValue, stringsAreTheSameToQSettings)
{
    const SettingsFile file;
    for (const QString &expected : allOf(trickyLists())) {
        const QByteArray ours = ini::encodeString(expected);
        EXPECT_EQ(ini::decodeString(ours), expected) << ours.constData();
        EXPECT_EQ(file.readByQSettings(ours).toString(), expected) << ours.constData();
        EXPECT_EQ(ini::decodeString(file.writtenByQSettings(expected)), expected);
    }
}

TEST(IniValue, dataIsTheSameToQSettings)
{
    const SettingsFile file;
    QByteArray everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += char(byte);
    for (const QByteArray &expected :
         {QByteArray(), QByteArray(R"({"keyCode":9,"modifiers":768})"), everyByte}) {
        const QByteArray ours = ini::encodeData(expected);
        EXPECT_EQ(ini::decodeData(ours), expected);
        EXPECT_EQ(file.readByQSettings(ours).toByteArray(), expected);
        EXPECT_EQ(ini::decodeData(file.writtenByQSettings(expected)), expected);
    }
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
