#include "JoinPanel/JoinPanelModel.h"

#include "support/MeetingFactory.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <map>

namespace mivora {

class JoinPanelModelTest : public testing::Test
{
public:
    JoinPanelModelTest()
    {
        const QMetaObject *meta = model.metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            if (method.methodType() == QMetaMethod::Signal)
                spies.emplace(method.name().toStdString(), std::make_unique<QSignalSpy>(&model, method));
        }
    }

    /// The names of the signals since the last time, sorted; a signal that came twice stands twice.
    std::vector<std::string> takeSignals()
    {
        std::vector<std::string> names;
        for (const auto &[name, spy] : spies) {
            names.insert(names.end(), spy->count(), name);
            spy->clear();
        }
        return names;
    }

    JoinPanelModel model{ten - Seconds(90)};
    std::map<std::string, std::unique_ptr<QSignalSpy>> spies;
};

using Names = std::vector<std::string>;

TEST_F(JoinPanelModelTest, announcesWhatReallyChanged)
{
    Meeting meeting = makeMeeting("Standup", ten);
    const auto changeMeeting = [&](auto change) {
        change(meeting);
        model.setMeeting(meeting);
        return takeSignals();
    };
    EXPECT_EQ(changeMeeting([](Meeting &) {}), (Names{"meetingChanged", "timeTextChanged", "titleChanged"}));
    EXPECT_EQ(changeMeeting([](Meeting &) {}), Names{});
    EXPECT_EQ(changeMeeting([](Meeting &m) { m.attendeeCount = 5; }), Names{"meetingChanged"});
    EXPECT_EQ(changeMeeting([](Meeting &m) { m = withLink(m); }),
              (Names{"meetingChanged", "serviceNameChanged"}));
    EXPECT_EQ(changeMeeting([](Meeting &m) {
                  m.calendarColor = Color{1, 2, 3};
              }),
              (Names{"accentColorChanged", "meetingChanged"}));
    EXPECT_EQ(model.accentColor(), QStringLiteral("#010203"));

    const auto moveTo = [&](double afterStart) {
        model.setNow(ten + Seconds(afterStart));
        return takeSignals();
    };
    EXPECT_EQ(moveTo(-90), Names{});
    EXPECT_EQ(moveTo(-61), Names{"nowChanged"}) << "the line reads as before: nothing is drawn again";
    EXPECT_EQ(moveTo(-31), (Names{"nowChanged", "timeTextChanged"}));
    EXPECT_EQ(moveTo(0), (Names{"hasStartedChanged", "nowChanged"}));
    EXPECT_EQ(moveTo(60), (Names{"nowChanged", "timeTextChanged"}));
}

TEST_F(JoinPanelModelTest, propertiesFitTogetherWhenOneIsAnnounced)
{
    model.setMeeting(makeMeeting("Standup", ten));
    QString line;
    QObject::connect(&model, &JoinPanelModel::hasStartedChanged, &model, [&] { line = model.timeText(); });
    QObject::connect(&model, &JoinPanelModel::timeTextChanged, &model,
                     [&] { EXPECT_TRUE(model.hasStarted()); });
    model.setNow(ten + Seconds(60));
    EXPECT_EQ(line, QStringLiteral("Started 1m ago"));
}

} // namespace mivora
