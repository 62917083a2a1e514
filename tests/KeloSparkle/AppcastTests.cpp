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

std::string fault(UpdateFault value)
{
    return summary(UpdateFailure{value, {}});
}

QString notesOf(const QByteArray &description)
{
    const auto items = parseAppcast(feed(item("1.1", description)));
    return items ? items->at(0).notes : QStringLiteral("malformed");
}

} // namespace

TEST(AppcastTests, theNewestReleaseForThisSystemIsChosen)
{
    const QByteArray oldStyle = "<item><enclosure url=\"https://kelo.example/m.deb\" length=\"10\" "
                                "sparkle:version=\"1.4\" sparkle:shortVersionString=\"1.4 (Spring)\" "
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
        {"only older ones", item("0.9") + item("0.8"), "none 0.9"},
        {"whatever the order", item("1.9") + item("1.10") + item("1.2"), "update 1.10"},
        {"a pre-release of the same", item("1.0-rc.1"), "none 1.0-rc.1"},
        {"has a name", item("1.5", "<sparkle:shortVersionString>Five</sparkle:shortVersionString>"),
         "update Five"},
        {"versions in the enclosure", oldStyle, "update 1.4 (Spring)"},
        {"for a channel", item("1.2", "<sparkle:channel>beta</sparkle:channel>") + item("1.1"), "update 1.1"},
        {"for another system",
         item("1.2", "", "url=\"https://k.example/m\" length=\"1\" sparkle:os=\"macos\"") + item("1.1"),
         "update 1.1"},
        {"needs a newer system",
         item("3.0", "<sparkle:minimumSystemVersion>2.99</sparkle:minimumSystemVersion>") +
             item("1.1", "<sparkle:minimumSystemVersion>2.4</sparkle:minimumSystemVersion>"),
         "update 1.1"},
        {"all need a newer system",
         item("3.0", "<sparkle:minimumSystemVersion>2.99</sparkle:minimumSystemVersion>") + item("1.0"),
         "needs 3.0"},
        {"no version at all", item("soon") + item(""), "none "},
        {"another vocabulary's elements",
         item("1.1", "<o:version xmlns:o=\"urn:o\">9</o:version><o:channel xmlns:o=\"urn:o\">b</o:channel>") +
             "<item xmlns=\"urn:o\" xmlns:sparkle=\"urn:o\"><sparkle:version>9</sparkle:version></item>",
         "update 1.1"},
        {"a name of two lines", item("1.1", shortVersion("1.1\n\nCall us now")), "update 1.1 Call us now"},
        {"a name that reads backwards",
         item("1.1", shortVersion("\xE2\x80\xAE"
                                  "9.9")),
         "update 9.9"},
        {"a name without end", item("1.1", shortVersion(QByteArray(500, '7'))),
         "update 7777777777777777777777777777777777777777"},
        {"a name of nothing", item("1.1", shortVersion("\xE2\x80\xAE")), "update 1.1"},
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

    const struct
    {
        const char *name;
        QByteArray enclosure;
        UpdateFault expected;
    } rows[] = {
        {"no signature", url + length, UpdateFault::unsignedPackage},
        {"empty signature", url + length + "sparkle:edSignature=\"\"", UpdateFault::unsignedPackage},
        {"no base64", url + length + "sparkle:edSignature=\"" + QByteArray(88, '!') + "\"",
         UpdateFault::unsignedPackage},
        {"short signature", url + length + "sparkle:edSignature=\"AAAA\"", UpdateFault::unsignedPackage},
        {"signature without the namespace", url + length + "edSignature=\"" + signature + "\"",
         UpdateFault::unsignedPackage},
        {"http", "url=\"http://kelo.example/m\" " + length + signedBy, UpdateFault::insecure},
        {"file", "url=\"file:///etc/passwd\" " + length + signedBy, UpdateFault::insecure},
        {"relative", "url=\"m.deb\" " + length + signedBy, UpdateFault::insecure},
        {"with a user", "url=\"https://me:pw@kelo.example/m\" " + length + signedBy, UpdateFault::insecure},
        {"no length", url + signedBy, UpdateFault::malformedFeed},
        {"negative", url + signedBy + "length=\"-1\"", UpdateFault::malformedFeed},
        {"words", url + signedBy + "length=\"ten\"", UpdateFault::malformedFeed},
        {"too large", url + signedBy + "length=\"99999999999\"", UpdateFault::malformedFeed},
    };

    for (const auto &row : rows)
        EXPECT_EQ(summary(chosen(feed(item("1.1", "", row.enclosure)))), fault(row.expected)) << row.name;
}

TEST(AppcastTests, whatIsNoHonestFeedIsRefusedWhole)
{
    const QByteArray good = feed(item("1.1"));
    const QByteArray bomb =
        "<?xml version=\"1.0\"?><!DOCTYPE rss [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;\">]>" +
        good.mid(good.indexOf("<rss"));
    const QByteArray external = "<?xml version=\"1.0\"?><!DOCTYPE rss SYSTEM \"file:///etc/passwd\">" +
                                good.mid(good.indexOf("<rss"));

    const struct
    {
        const char *name;
        QByteArray xml;
    } rows[] = {
        {"nothing", ""},
        {"text", "Not found"},
        {"html", "<html><body><p>Sign in</p></body></html>"},
        {"no channel", "<rss version=\"2.0\"/>"},
        {"cut off", good.left(good.size() - 10)},
        {"rubbish behind", good + "<x"},
        {"entities", bomb},
        {"external document type", external},
        {"unknown entity", feed(item("1.1", "<title>&xxe;</title>"))},
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
    for (const auto &row : rows)
        EXPECT_FALSE(parseAppcast(row.xml)) << row.name;
}

TEST(AppcastTests, aFeedOfAnySizeIsReadInPieces)
{
    QByteArray releases;
    for (int i = 0; i < 500; ++i)
        releases += item("1." + QByteArray::number(i),
                         "<description>Größer \xF0\x9F\x98\x80 " + QByteArray(50, 'n') + "</description>");
    const auto items = parseAppcast(feed(releases));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 500U);
    for (const AppcastItem &one : *items)
        EXPECT_EQ(one.notes.toStdString(), "Größer \xF0\x9F\x98\x80 " + std::string(50, 'n'));

    for (const qsizetype size : {16 * 1024 - 1, 16 * 1024, 16 * 1024 + 1})
        EXPECT_EQ(summary(chosen(feedOfSize(size) + "\n")), "update 1.1") << size;
}

TEST(AppcastTests, notesAreWhatAPersonReadsInThem)
{
    const struct
    {
        QByteArray description;
        const char *expected;
    } rows[] = {
        {"", ""},
        {"<description>Two\nlines</description>", "Two\nlines"},
        {"<description><![CDATA[<p>One &amp; <b>two</b></p>]]></description>", "One & two"},
        {"<description><![CDATA[<h2>New</h2>\n<p>Gr&ouml;&szlig;er,\nfür\nalle.</p><p>B<br>C]]></"
         "description>",
         "New\n\nGrößer, für alle.\n\nB\nC"},
        {"<description><![CDATA[<meta charset=latin1>ü<style>p{}</style><!-- no --> <pre>a\n  b</pre>]]>"
         "</description>",
         "ü\n\na\n  b"},
        {"<description>&lt;p&gt;Escaped&lt;/p&gt;</description>", "Escaped"},
        {"<description><![CDATA[<ul><li>a</li><li>b</li></ul>]]></description>", "• a\n• b"},
        {"<description><![CDATA[Two<ul><li><p>a</p><ul><li>b</li></ul></li></ul>End]]></description>",
         "Two\n• a\n• b\nEnd"},
        {"<description><![CDATA[<img src='file:///etc/passwd'>x<script>alert(1)</script>]]></description>",
         "x"},
        {"<description sparkle:format=\"plain-text\">a &lt;b&gt; c</description>", "a <b> c"},
        {"<description>One\n\nTwo\n \n\t\n\nThree</description>", "One\n\nTwo\n\nThree"},
        {"<description>safe\xE2\x80\xAEtxt</description>", "safetxt"},
    };

    for (const auto &row : rows)
        EXPECT_EQ(notesOf(row.description).toStdString(), row.expected) << row.description.constData();
}

// A layout of these has millions of cells; whoever makes one is busy for minutes.
TEST(AppcastTests, notesThatAskForEnormousTablesAreRead)
{
    for (const QByteArray tag : {"<td colspan=9999>", "<table><tr><td colspan=99999999 rowspan=99999999>",
                                 "<ul><li>", "<b>", "<table>"}) {
        const QByteArray description =
            "<description><![CDATA[x" + tag.repeated(int(19'000 / tag.size())) + "]]></description>";
        EXPECT_TRUE(notesOf(description).startsWith(QLatin1Char('x'))) << tag.constData();
    }
}

} // namespace kelo
