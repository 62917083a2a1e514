#include "Calendar/TitleOrder.h"

#include <QString>
#include <algorithm>

namespace mivora {

namespace {

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
}

std::string composed(std::string_view text)
{
    if (isAscii(text))
        return std::string(text);
    return QString::fromUtf8(text.data(), qsizetype(text.size()))
        .normalized(QString::NormalizationForm_C)
        .toStdString();
}

} // namespace

bool titleSortsBefore(std::string_view left, std::string_view right)
{
    // UTF-8 sorts by bytes as by scalar values; ASCII is its own composed form.
    if (isAscii(left) && isAscii(right))
        return left < right;
    return composed(left) < composed(right);
}

} // namespace mivora
