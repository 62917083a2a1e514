#include "Platform/linux/IniDocument.h"
#include "Platform/linux/IniValue.h"
#include "support/Require.h"

// Any bytes as a settings file: it stays as it is but for what is changed, and values come back as they went
// in.
namespace {

using namespace mivora;
using support::require;

const QString changedKey = QStringLiteral("titleWidth");

void checkValue(const QByteArray &value)
{
    if (const auto text = ini::decodeString(value))
        require(ini::decodeString(ini::encodeString(*text)) == text, "a text comes back");
    if (const auto list = ini::decodeStringList(value))
        require(ini::decodeStringList(ini::encodeStringList(*list)) == list, "a list comes back");
    if (const auto data = ini::decodeData(value))
        require(ini::decodeData(ini::encodeData(*data)) == data, "data comes back");
    ini::decodeBoolean(value);
    ini::decodeInteger(value);
}

void checkChange(const IniDocument &before)
{
    IniDocument changed = before;
    changed.setValue(changedKey, "12");
    const IniDocument read(changed.text());
    auto expected = before.values();
    expected.insert(changedKey, "12");
    require(changed.values() == expected, "a change touches one value");
    require(read.values() == expected, "a changed file reads as it was written");

    changed.remove(changedKey);
    expected.remove(changedKey);
    require(IniDocument(changed.text()).values() == expected, "a removed value is gone, and only it");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), qsizetype(size));
    const IniDocument document(text);
    require(document.text() == text, "a file that is not changed stays the same byte for byte");
    for (const QByteArray &value : document.values())
        checkValue(value);
    checkChange(document);
    return 0;
}
