// From the request for the settings to their first picture: with nothing loaded yet, and with a window that
// was closed. 200 calendars in 12 accounts. Also what a closed window keeps in memory.

#include "Settings/SettingsUnderTest.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

using namespace mivora;

void fill(FakeEventSource &source)
{
    for (int i = 0; i < 200; ++i) {
        const std::string number = std::to_string(i);
        source.known.push_back({number, "Calendar " + number, "Account " + std::to_string(i % 12), Color{}});
    }
}

double megabytesResident()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

// Until the window has drawn; the program itself doesn't link Qt Quick, hence the signal by name.
void openAndWait(SettingsUnderTest &test, SettingsPage page)
{
    test.controller.show(page);
    const QMetaObject *meta = test.window().metaObject();
    QSignalSpy drawn(&test.window(), meta->method(meta->indexOfSignal("frameSwapped()")));
    if (!QTest::qWaitFor([&] { return !drawn.isEmpty(); }))
        std::abort();
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

void measureFirstOpening()
{
    SettingsUnderTest test;
    fill(test.source);
    const double before = megabytesResident();
    QElapsedTimer timer;
    timer.start();
    openAndWait(test, SettingsPage::calendars);
    const auto took = timer.elapsed();
    const double open = megabytesResident();
    test.window().close();
    QTest::qWait(200);
    test.controller.release();
    const double released = megabytesResident();
    timer.start();
    openAndWait(test, SettingsPage::calendars);
    std::printf("first opening %lld ms, after a release %lld ms\n"
                "memory before %.1f MB, open +%.1f MB, released +%.1f MB\n",
                static_cast<long long>(took), static_cast<long long>(timer.elapsed()), before, open - before,
                released - before);
}

} // namespace

BENCHMARK_CAPTURE(laterOpening, general, SettingsPage::general)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(laterOpening, calendars, SettingsPage::calendars)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    measureFirstOpening();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
