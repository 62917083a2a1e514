#include "KeloSparkle/InformationDictionary.h"
#include "KeloSparkle/SparkleUpdater.h"
#include "KeloSparkle/engine/Signature.h"
#include "KeloSparkle/engine/UpdateChoice.h"
#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"

#include <QGuiApplication>
#include <QTemporaryFile>
#include <benchmark/benchmark.h>
#include <sodium.h>

namespace {

using namespace kelo;

// What every start of the program pays for updates.
void makeUpdater(benchmark::State &state)
{
    const QDBusConnection noBus(QStringLiteral("none"));
    Appearance appearance(noBus);
    ViewLoader views(appearance);
    for (auto _ : state) {
        SparkleUpdater updater(
            InformationDictionary::read(InformationDictionary::programPath()),
            makeUpdaterHost(views, noBus, {QStringLiteral("Mivora"), QStringLiteral("1.0")}));
        benchmark::DoNotOptimize(updater.canCheckForUpdates());
    }
}

BENCHMARK(makeUpdater)->Unit(benchmark::kMicrosecond);

// A feed with the releases of some years.
void chooseAmongHundredReleases(benchmark::State &state)
{
    QByteArray feed = "<rss version=\"2.0\" "
                      "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel>";
    for (int i = 0; i < 100; ++i)
        feed += "<item><sparkle:version>1." + QByteArray::number(i) +
                "</sparkle:version><description><![CDATA[<ul><li>One</li><li>Two</li></ul>]]></description>"
                "<enclosure url=\"https://kelo.example/m.deb\" length=\"10\" sparkle:edSignature=\"" +
                QByteArray(64, 'x').toBase64() + "\"/></item>";
    feed += "</channel></rss>";
    for (auto _ : state)
        benchmark::DoNotOptimize(
            chooseUpdate(*parseAppcast(feed), {QStringLiteral("1.0"), QStringLiteral("2.36")}));
}

BENCHMARK(chooseAmongHundredReleases)->Unit(benchmark::kMillisecond);

void verifyTenMegabytes(benchmark::State &state)
{
    unsigned char publicKey[crypto_sign_PUBLICKEYBYTES];
    unsigned char secretKey[crypto_sign_SECRETKEYBYTES];
    unsigned char signature[crypto_sign_BYTES];
    const QByteArray content(10'000'000, 'p');
    if (sodium_init() < 0)
        return state.SkipWithError("no libsodium");
    crypto_sign_keypair(publicKey, secretKey);
    crypto_sign_detached(signature, nullptr, reinterpret_cast<const unsigned char *>(content.constData()),
                         std::size_t(content.size()), secretKey);
    QTemporaryFile file;
    if (!file.open() || file.write(content) != content.size() || !file.flush())
        return state.SkipWithError("no room for the file");
    const auto array = [](const unsigned char *bytes, qsizetype size) {
        return QByteArray(reinterpret_cast<const char *>(bytes), size);
    };
    for (auto _ : state) {
        if (!isSignedBy(file, array(signature, sizeof signature), array(publicKey, sizeof publicKey)))
            return state.SkipWithError("the signature does not hold");
    }
}

BENCHMARK(verifyTenMegabytes)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
