#pragma once

#include <string>
#include <vector>

namespace tlm {

// The user's preferred user-interface languages as tags ("de-DE"), most preferred first; empty when
// the system cannot tell.
std::vector<std::u16string> PreferredUiLanguages();

} // namespace tlm
