#include "KeloSparkle/engine/UpdateChoice.h"

#include <gtest/gtest.h>

namespace kelo {

namespace {

const QByteArray signature = QByteArray(64, 'x').toBase64();

QByteArray feed(const QByteArray &items)
{
    return "<?xml version=\"1.0\"?>\n<rss version=\"2.0\" "
           "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel><title>M</title>" +
           items + "</channel></rss>";
}

QByteArray item(const QByteArray &version, const QByteArray &more = {}, QByteArray enclosure = {})
{
    if (enclosure.isEmpty())
        enclosure = "url=\"https://kelo.example/m-" + version +
                    ".deb\" length=\"10\" sparkle:edSignature=\"" + signature + "\"";
    return "<item><sparkle:version>" + version + "</sparkle:version>" + more + "<enclosure " + enclosure +
           "/></item>";
}

QByteArray shortVersion(const QByteArray &name)
{
    return "<sparkle:shortVersionString>" + name + "</sparkle:shortVersionString>";
}

QByteArray needs(const QByteArray &system)
{
    return "<sparkle:minimumSystemVersion>" + system + "</sparkle:minimumSystemVersion>";
}

QByteArray description(const QByteArray &html)
{
    return "<description><![CDATA[" + html + "]]></description>";
}

/// Attributes, or prefixes, without end: their price grows with the square of their number.
QByteArray manyAttributes(const QByteArray &prefix)
{
    QByteArray attributes;
    for (int i = 0; i < 60'000; ++i)
        attributes += ' ' + prefix + QByteArray::number(i) + "=\"u\"";
    return attributes;
}

/// A feed of exactly \a size bytes.
QByteArray feedOfSize(qsizetype size)
{
    const QByteArray empty = feed(item("1.1") + "<title></title>");
    return feed(item("1.1") + "<title>" + QByteArray(size - empty.size(), 't') + "</title>");
}

CheckOutcome chosen(const QByteArray &xml)
{
    const auto items = parseAppcast(xml);
    if (!items)
        return UpdateFailure{UpdateFault::malformedFeed, {}};
    return chooseUpdate(*items, {QStringLiteral("1.0"), QStringLiteral("2.36")});
}

/// "update 1.2", "none 1.0", "needs 3.0" or "fault N".
std::string summary(const CheckOutcome &outcome)
{
    if (const auto *update = std::get_if<Update>(&outcome))
        return "update " + update->displayVersion.toStdString();
    if (const auto *failure = std::get_if<UpdateFailure>(&outcome))
        return "fault " + std::to_string(int(failure->fault));
    const auto &none = std::get<NoUpdate>(outcome);
    return none.needsNewerSystem.isEmpty() ? "none " + none.newest.toStdString()
                                           : "needs " + none.needsNewerSystem.toStdString();
}

QString notesOf(const QByteArray &stored)
{
    const auto items = parseAppcast(feed(item("1.1", stored)));
    return items ? items->at(0).notes : QStringLiteral("malformed");
}

} // namespace

TEST(AppcastTests, theNewestReleaseForThisSystemIsChosen)
{
    const QByteArray oldStyle =
        "<item><enclosure url=\"https://k.example/m\" length=\"10\" sparkle:version=\"1.4\" "
        "sparkle:edSignature=\"" +
        signature + "\"/></item>";

    const struct
    {
        const char *name;
        QByteArray items;
        const char *expected;
    } rows[] = {
        {"no items", "", "none "},
        {"the same", item("1.0"), "none 1.0"},
        {"whatever the order", item("1.9") + item("1.10") + item("1.2"), "update 1.10"},
        {"a pre-release of the same", item("1.0-rc.1"), "none 1.0-rc.1"},
        {"has a name of two lines", item("1.5", shortVersion("Five\n\nCall us now")),
         "update Five Call us now"},
        {"versions in the enclosure", oldStyle, "update 1.4"},
        {"for a channel", item("1.2", "<sparkle:channel>beta</sparkle:channel>") + item("1.1"), "update 1.1"},
        {"for another system",
         item("1.2", "", "url=\"https://k.example/m\" length=\"1\" sparkle:os=\"macos\"") + item("1.1"),
         "update 1.1"},
        {"needs a newer system", item("3.0", needs("2.99")) + item("1.1", needs("2.4")), "update 1.1"},
        {"all need a newer system", item("3.0", needs("2.99")) + item("1.0"), "needs 3.0"},
        {"no version at all", item("soon") + item(""), "none "},
        {"another vocabulary's elements",
         item("1.1", "<o:version xmlns:o=\"urn:o\">9</o:version><o:channel xmlns:o=\"urn:o\">b</o:channel>") +
             "<item xmlns=\"urn:o\" xmlns:sparkle=\"urn:o\"><sparkle:version>9</sparkle:version></item>",
         "update 1.1"},
        {"a name that reads backwards", item("1.1", shortVersion("\u202E9.9")), "update 9.9"},
        {"a name without end", item("1.1", shortVersion(QByteArray(500, '7'))),
         "update 7777777777777777777777777777777777777777"},
        {"a name of nothing", item("1.1", shortVersion("\u202E")), "update 1.1"},
        {"an item inside of another element", "<group>" + item("9.9") + "</group>" + item("1.1"),
         "update 1.1"},
    };

    for (const auto &row : rows)
        EXPECT_EQ(summary(chosen(feed(row.items))), row.expected) << row.name;
}

TEST(AppcastTests, aReleaseThatCantBeTrustedIsRefused)
{
    const QByteArray url = "url=\"https://kelo.example/m\" ";
    const QByteArray length = "length=\"10\" ";
    const QByteArray signedBy = "sparkle:edSignature=\"" + signature + "\" ";

    const std::pair<QByteArray, UpdateFault> rows[] = {
        {url + length, UpdateFault::unsignedPackage},
        {url + length + "sparkle:edSignature=\"\"", UpdateFault::unsignedPackage},
        {url + length + "sparkle:edSignature=\"AAAA\"", UpdateFault::unsignedPackage},
        {url + length + "sparkle:edSignature=\"" + QByteArray(88, '!') + "\"", UpdateFault::unsignedPackage},
        {url + length + "edSignature=\"" + signature + "\"", UpdateFault::unsignedPackage},
        {"url=\"http://kelo.example/m\" " + length + signedBy, UpdateFault::insecure},
        {"url=\"file:///etc/passwd\" " + length + signedBy, UpdateFault::insecure},
        {"url=\"m.deb\" " + length + signedBy, UpdateFault::insecure},
        {"url=\"https://me:pw@kelo.example/m\" " + length + signedBy, UpdateFault::insecure},
        {url + signedBy, UpdateFault::malformedFeed},
        {url + signedBy + "length=\"-1\"", UpdateFault::malformedFeed},
        {url + signedBy + "length=\"99999999999\"", UpdateFault::malformedFeed},
    };

    for (const auto &[enclosure, expected] : rows)
        EXPECT_EQ(summary(chosen(feed(item("1.1", "", enclosure)))), summary(UpdateFailure{expected, {}}))
            << enclosure.constData();
}

TEST(AppcastTests, whatIsNoHonestFeedIsRefusedWhole)
{
    const QByteArray good = feed(item("1.1"));
    const QByteArray bomb =
        "<?xml version=\"1.0\"?><!DOCTYPE rss [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;\">]>" +
        good.mid(good.indexOf("<rss"));
    const QByteArray external = "<?xml version=\"1.0\"?><!DOCTYPE rss SYSTEM \"file:///etc/passwd\">" +
                                good.mid(good.indexOf("<rss"));

    const std::pair<const char *, QByteArray> rows[] = {
        {"nothing", ""},
        {"html", "<html><body><p>Sign in</p></body></html>"},
        {"no channel", "<rss version=\"2.0\"/>"},
        {"cut off", good.left(good.size() - 10)},
        {"rubbish behind", good + "<x"},
        {"entities", bomb},
        {"external document type", external},
        {"no declared prefix",
         "<rss><channel><item><sparkle:version>2</sparkle:version></item></channel></rss>"},
        {"deep", feed(QByteArray("<a>").repeated(40) + QByteArray("</a>").repeated(40))},
        {"endless", feed(QByteArray("<item/>").repeated(2000))},
        {"endless attributes", feed("<a" + manyAttributes("a") + "/>")},
        {"endless prefixes", feed("<a" + manyAttributes("xmlns:a") + "/>")},
        {"endless word", feed("<title>" + QByteArray(500'000, 'x') + "</title>")},
        {"rubbish behind, in the next piece", feedOfSize(16 * 1024) + "<x"},
        {"zero bytes", feed(QByteArray(3, '\0'))},
    };

    EXPECT_EQ(summary(chosen(good)), "update 1.1");
    for (const auto &[name, xml] : rows)
        EXPECT_FALSE(parseAppcast(xml)) << name;
}

TEST(AppcastTests, aFeedOfAnySizeIsReadInPieces)
{
    QByteArray releases;
    for (int i = 0; i < 500; ++i)
        releases += item("1." + QByteArray::number(i),
                         "<description>Größer 😀 " + QByteArray(50, 'n') + "</description>");
    const auto items = parseAppcast(feed(releases));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 500U);
    for (const AppcastItem &one : *items)
        EXPECT_EQ(one.notes.toStdString(), "Größer 😀 " + std::string(50, 'n'));

    for (const qsizetype size : {16 * 1024 - 1, 16 * 1024, 16 * 1024 + 1})
        EXPECT_EQ(summary(chosen(feedOfSize(size) + "\n")), "update 1.1") << size;
}

TEST(AppcastTests, notesAreWhatAPersonReadsInThem)
{
    const std::pair<QByteArray, const char *> rows[] = {
        {"<description>Two\nlines</description>", "Two\nlines"},
        {"<description>One\n\nTwo\n \n\t\n\nThree</description>", "One\n\nTwo\n\nThree"},
        {"<description>&lt;p&gt;Escaped&lt;/p&gt;</description>", "Escaped"},
        {"<description sparkle:format=\"plain-text\">a &lt;b&gt; c</description>", "a <b> c"},
        {"<description>safe\u202Etxt</description>", "safetxt"},
        {description("<p>One &amp; <b>two</b></p>"), "One & two"},
        {description("<h2>New</h2>\n<p>Gr&ouml;&szlig;er,\nfür\nalle.</p><p>B<br>C"),
         "New\n\nGrößer, für alle.\n\nB\nC"},
        {description("<meta charset=latin1>ü<style>p{}</style><!-- no --> <pre>a\n  b</pre>"), "ü\n\na\n  b"},
        {description("Two<ul><li><p>a</p><ul><li>b</li></ul></li></ul>End"), "Two\n• a\n• b\nEnd"},
        {description("<img src='file:///etc/passwd'>x<script>alert(1)</script>"), "x"},
    };

    for (const auto &[stored, expected] : rows)
        EXPECT_EQ(notesOf(stored).toStdString(), expected) << stored.constData();
}

// A layout of these has millions of cells; whoever makes one is busy for minutes.
TEST(AppcastTests, notesThatAskForEnormousTablesAreRead)
{
    for (const QByteArray tag : {"<td colspan=9999>", "<table><tr><td colspan=99999999 rowspan=99999999>",
                                 "<ul><li>", "<b>", "<table>"}) {
        const QByteArray notes = description("x" + tag.repeated(int(19'000 / tag.size())));
        EXPECT_TRUE(notesOf(notes).startsWith(QLatin1Char('x'))) << tag.constData();
    }
}

} // namespace kelo
