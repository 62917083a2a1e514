// Whatever a server sends: no crash, no endless work, and an order of versions that is one.

#include "KeloSparkle/engine/UpdateChoice.h"
#include "KeloSparkle/engine/Version.h"

#include <cstdlib>

using namespace kelo;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray xml(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto items = parseAppcast(xml);
    if (!items)
        return 0;
    const CheckOutcome outcome = chooseUpdate(*items, {QStringLiteral("1.0"), QStringLiteral("2.36")});
    const auto running = Version::parse(QStringLiteral("1.0"));
    if (const auto *update = std::get_if<Update>(&outcome)) {
        const auto version = Version::parse(update->version);
        if (!version || !(*running < *version) || *version < *running || !isSecureAddress(update->url))
            std::abort();
    }
    return 0;
}
