#include "FeedServer.h"
#include "KeloUpdates/UpdateFeed.h"
#include "Platform/PluginFile.h"

#include <QTest>

namespace kelo {

namespace {

class FeedTests : public testing::Test
{
protected:
    FeedTests()
    {
        server.trust();
        server.publishVersion("1.10");
    }

    /// What comes of a check: a fault, or the version that is offered.
    std::string check(const UpdateFeed &asked)
    {
        std::optional<CheckOutcome> outcome;
        checker->check(asked, [&](const CheckOutcome &what) { outcome = what; });
        EXPECT_FALSE(outcome) << "not before check() returns";
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, 10'000));
        constexpr const char *faults[] = {"incomplete", "unusable",    "unreachable", "untrusted",
                                          "refused",    "not genuine", "malformed"};
        if (const auto *fault = std::get_if<UpdateFault>(&*outcome))
            return faults[int(*fault)];
        update = std::holds_alternative<Update>(*outcome) ? std::get<Update>(*outcome) : Update();
        return update.version.isNull() ? "none" : update.version.toStdString();
    }

    FeedServer server;
    UpdateFeed feed{server.address(), server.publicKey(), QStringLiteral("1.9")};
    Update update;
    mivora::PluginFile plugin{"mivora-updates", "MIVORA_UPDATES"};
    UpdateChecker *checker = plugin.get<UpdateChecker>();
};

} // namespace

TEST_F(FeedTests, aGenuineFeedIsReadWhole)
{
    for (const auto &[running, expected] :
         {std::pair("1.10", "none"), {"1.10.0", "none"}, {"2", "none"}, {"1.9", "1.10"}}) {
        feed.runningVersion = QLatin1String(running);
        EXPECT_EQ(check(feed), expected) << running;
    }
    EXPECT_EQ(update.date, QDate(2026, 12, 24));
    EXPECT_EQ(update.notes, QStringLiteral("<b>Faster</b>"));
    EXPECT_EQ(update.page, QStringLiteral("https://kelo.example/get"));
    checker->check(feed, [](const CheckOutcome &) { ADD_FAILURE() << "cancelled"; });
    checker->cancel();
    checker->check(feed, [](const CheckOutcome &) { ADD_FAILURE() << "superseded"; });
    EXPECT_EQ(check(feed), "1.10");
}

TEST_F(FeedTests, nothingIsBelievedThatThePublisherDidNotSign)
{
    const QByteArray document = server.answers["/feed"].body;
    const QByteArray signature = server.answers["/feed.sig"].body;
    const std::tuple<QByteArray, Answer, const char *> rows[] = {
        {QByteArray(document).replace("1.10", "1.11"), {.body = signature}, "not genuine"},
        {"{", {.body = signature}, "not genuine"},
        {document, {.body = FeedServer().sign(document)}, "not genuine"},
        {document, {.body = signature.chopped(1)}, "not genuine"},
        {document, {.body = signature + '\n'}, "refused"},
        {document, {.status = 404, .body = signature}, "refused"},
    };
    for (const auto &[sent, answer, expected] : rows) {
        server.answers = {{"/feed", {.body = sent}}, {"/feed.sig", answer}};
        EXPECT_EQ(check(feed), expected) << sent.constData() << answer.body.size();
    }
    for (const auto &[from, to] : {std::pair("{", "["),
                                   {"1.10", ""},
                                   {"1.10", "1.10-rc1"},
                                   {"2026-12-24", "soon"},
                                   {"https://", "http://"},
                                   {"https://kelo.example/get", "https:///get"}}) {
        server.publish(QByteArray(document).replace(from, to));
        EXPECT_EQ(check(feed), "malformed") << to;
    }
}

TEST_F(FeedTests, aServerIsGivenLittleTrustAndLittleRoom)
{
    const QByteArray document = server.answers["/feed"].body;
    const QByteArray longest = document.leftJustified(64 * 1024, ' ');
    server.publish(longest);
    EXPECT_EQ(check(feed), "1.10");
    for (const Answer &answer :
         {Answer{.status = 500, .body = document}, Answer{.status = 302, .header = "Location: /feed.sig\r\n"},
          Answer{.body = longest + ' '}}) {
        server.answers["/feed"] = answer;
        EXPECT_EQ(check(feed), "refused") << answer.status << ' ' << answer.body.size();
    }

    server.requests.clear();
    UpdateFeed unusable = feed;
    unusable.address.setScheme(QStringLiteral("http"));
    EXPECT_EQ(check(unusable), "unusable");
    unusable = {feed.address, QStringLiteral("YWJj"), feed.runningVersion};
    EXPECT_EQ(check(unusable), "unusable");
    FeedServer().trust();
    EXPECT_EQ(check(feed), "untrusted");
    EXPECT_TRUE(server.requests.isEmpty());
    server.close();
    EXPECT_EQ(check(feed), "unreachable");
}

} // namespace kelo
