// From the request for the settings to their first picture: with nothing loaded yet, and with a window that
// was closed. 200 calendars in 12 accounts, and how long each picture takes while they are scrolled.

#include "BareWindow.h"
#include "Settings/SettingsUnderTest.h"
#include "support/PrivateDisplay.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <ctime>
#include <memory>

namespace {

using namespace mivora;

void fill(FakeEventSource &source)
{
    for (int i = 0; i < 200; ++i) {
        const std::string number = std::to_string(i);
        source.known.push_back({number, "Calendar " + number, "Account " + std::to_string(i % 12), Color{}});
    }
}

// Counts the pictures; the program itself doesn't link Qt Quick, hence the signal by name.
std::unique_ptr<QSignalSpy> picturesOf(const QWindow &window)
{
    const QMetaObject *meta = window.metaObject();
    return std::make_unique<QSignalSpy>(&window, meta->method(meta->indexOfSignal("frameSwapped()")));
}

void waitForPicture(const QSignalSpy &pictures)
{
    if (!QTest::qWaitFor([&] { return !pictures.isEmpty(); }))
        qFatal("nothing is drawn");
}

// Drawing may have ended when the window is back on the screen: a kept window is watched from before.
void openAndWait(SettingsUnderTest &test, SettingsPage page)
{
    std::unique_ptr<QSignalSpy> pictures;
    if (test.controller.window())
        pictures = picturesOf(test.window());
    test.controller.show(page);
    waitForPicture(pictures ? *pictures : *picturesOf(test.window()));
}

// The list of calendars, which nothing else on the page is as long as.
QObject &scrollingList(QWindow &window)
{
    QObject *longest = nullptr;
    const auto heightOf = [](const QObject *view) { return view->property("contentHeight").toDouble(); };
    for (QObject *object : window.findChildren<QObject *>()) {
        if (heightOf(object) > (longest ? heightOf(longest) : 0))
            longest = object;
    }
    if (!longest)
        std::abort();
    return *longest;
}

void laterOpening(benchmark::State &state, SettingsPage page)
{
    SettingsUnderTest test;
    fill(test.source);
    openAndWait(test, page);
    for (auto _ : state) {
        state.PauseTiming();
        test.window().close();
        QTest::qWait(20);
        state.ResumeTiming();
        openAndWait(test, page);
    }
}

// Down and up again. A picture that takes longer than 16 ms to make is a stutter; waiting for its turn and
// for other programs doesn't count.
void scrolling(benchmark::State &state)
{
    SettingsUnderTest test;
    fill(test.source);
    openAndWait(test, SettingsPage::calendars);
    QTest::qWait(300);
    QObject &list = scrollingList(test.window());
    constexpr int step = 60;
    constexpr int end = 6000;
    int travelled = 0;
    std::clock_t longest = 0;
    for (auto _ : state) {
        travelled += step;
        const int place = travelled % (2 * end);
        const auto pictures = picturesOf(test.window());
        const std::clock_t begin = std::clock();
        list.setProperty("contentY", place < end ? place : 2 * end - place);
        waitForPicture(*pictures);
        longest = std::max(longest, std::clock() - begin);
    }
    state.counters["longest_cpu_ms"] = double(longest) * 1e3 / CLOCKS_PER_SEC;
}

// With the loading of the plug-in.
void firstOpening(benchmark::State &state)
{
    SettingsUnderTest test;
    fill(test.source);
    const double before = residentMegabytes();
    for (auto _ : state)
        openAndWait(test, SettingsPage::calendars);
    state.counters["open_MB"] = residentMegabytes() - before;
}

void bareWindow(benchmark::State &state)
{
    for (auto _ : state)
        state.SetIterationTime(showBareWindow().seconds);
}

} // namespace

BENCHMARK(bareWindow)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(firstOpening)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(laterOpening, general, SettingsPage::general)
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(laterOpening, calendars, SettingsPage::calendars)
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(scrolling)->Iterations(400)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const support::PrivateDisplay display;
    display.enter();
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
