// From the request for a panel to its first frame on the screen, on a display of its own with the software
// renderer; and the memory that is in use when a panel was shown once and hidden again.

#include "BareWindow.h"
#include "JoinPanel/PanelUnderTest.h"
#include "Platform/linux/X11Connection.h"
#include "support/MeetingFactory.h"
#include "support/PrivateDisplay.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <benchmark/benchmark.h>

namespace {

using namespace mivora;

const Timestamp now = at("2026-03-10T08:59:00Z");
PanelUnderTest *test = nullptr;

// In seconds. The panel is drawn when its frame was handed over and the X server has answered after that.
double showPanel(const Meeting &meeting)
{
    QElapsedTimer timer;
    timer.start();
    test->panel.show(meeting, now);
    QEventLoop loop;
    QObject::connect(test->window(), SIGNAL(frameSwapped()), &loop, SLOT(quit()));
    loop.exec();
    mivora::X11Connection().inputFocus();
    return double(timer.nsecsElapsed()) / 1e9;
}

void hidePanel()
{
    test->panel.hide();
    QCoreApplication::processEvents();
    mivora::X11Connection().inputFocus();
}

// With the loading of the views' plug-in and the making of the view.
void firstPanel(benchmark::State &state)
{
    for (auto _ : state)
        state.SetIterationTime(showPanel(withLink(makeMeeting("Design review", now + Seconds(60)))));
    hidePanel();
}

// Each with another title, as it is from meeting to meeting.
void laterPanel(benchmark::State &state)
{
    int number = 0;
    for (auto _ : state) {
        state.SetIterationTime(
            showPanel(withLink(makeMeeting("Meeting " + std::to_string(++number), now + Seconds(60)))));
        hidePanel();
    }
}

// After the view was given back for being long unused.
void panelMadeAnew(benchmark::State &state)
{
    for (auto _ : state) {
        test->panel.controller().panel().releaseView();
        state.SetIterationTime(showPanel(withLink(makeMeeting("Design review", now + Seconds(60)))));
        hidePanel();
    }
}

void bareWindow(benchmark::State &state)
{
    for (auto _ : state) {
        const BareWindow window = showBareWindow();
        state.SetIterationTime(window.seconds);
        state.counters["bare_MB"] = window.megabytes;
    }
}

void memoryAfterOnePanel(benchmark::State &state)
{
    for (auto _ : state)
        state.SetIterationTime(1);
    state.counters["panel_MB"] = residentMegabytes();
    test->panel.controller().panel().releaseView();
    state.counters["released_MB"] = residentMegabytes();
}

BENCHMARK(bareWindow)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(firstPanel)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(memoryAfterOnePanel)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(laterPanel)->Iterations(50)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(panelMadeAnew)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const support::PrivateDisplay display;
    display.enter();
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication app(argc, argv);
    PanelUnderTest panel;
    test = &panel;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    panel.panel.controller().panel().releaseView();
    return 0;
}
