#include "Platform/linux/IniDocument.h"

#include <gmock/gmock.h>

using namespace mivora;

namespace {

auto set(const char *key, const char *value)
{
    return [=](IniDocument &document) { document.setValue(QString::fromUtf8(key), value); };
}

auto removed(const char *key)
{
    return [=](IniDocument &document) { document.remove(QString::fromUtf8(key)); };
}

} // namespace

TEST(IniDocument, editsChangeOneLineAndKeepTheOthers)
{
    const struct
    {
        const char *name;
        QByteArray before;
        std::function<void(IniDocument &)> edit;
        QByteArray after;
    } rows[] = {
        {"empty", "", set("a", "1"), "[General]\na=1\n"},
        {"at the end of its section", "[General]\nb=2\n\n[Window]\na=9\n", set("a", "1"),
         "[General]\nb=2\na=1\n\n[Window]\na=9\n"},
        {"only other sections", "[Window]\na=9\n", set("a", "1"), "[Window]\na=9\n[General]\na=1\n"},
        {"values before any section", "b=2\n[Window]\n", set("a", "1"), "b=2\na=1\n[Window]\n"},
        {"no newline at the end", "[General]\nb=2", set("a", "1"), "[General]\nb=2\na=1\n"},
        {"in place", "[General]\r\n a = 0 \r\nb=2\r\n", set("a", "1"), "[General]\r\na=1\nb=2\r\n"},
        {"the later of two", "[General]\na=0\na=5\n", set("a", "1"), "[General]\na=0\na=1\n"},
        {"both of two removed", "[general]\na=0\n; note\na=5\nb=2\n", removed("a"),
         "[general]\n; note\nb=2\n"},
        {"lines without meaning", "\xff\x01\n=x\nno value\n[General]\n;a=0\n#a=0\n", set("a", "1"),
         "\xff\x01\n=x\nno value\n[General]\na=1\n;a=0\n#a=0\n"},
        {"byte order mark", "\xef\xbb\xbf[General]\na=0\n", set("a", "1"), "\xef\xbb\xbf[General]\na=1\n"},
        {"escaped key", "[General]\nt%E9l%U4F1A=0\n100%=3\n", set("tél会", "1"),
         "[General]\nt%E9l%U4F1A=1\n100%=3\n"},
        {"key with a slash", "", set("a/b c", "1"), "[General]\na%2Fb%20c=1\n"}};

    for (const auto &row : rows) {
        IniDocument document(row.before);
        row.edit(document);
        EXPECT_EQ(document.text(), row.after) << row.name;
        EXPECT_EQ(IniDocument(document.text()).values(), document.values()) << row.name;
    }
}
