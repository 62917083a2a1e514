#pragma once

#include <string_view>

namespace mivora {

/// Whether \a left sorts before \a right by Unicode scalar values after canonical composition (NFC). The
/// order of titles and account names everywhere: plain, case-sensitive, the same in every locale.
bool titleSortsBefore(std::string_view left, std::string_view right);

} // namespace mivora
