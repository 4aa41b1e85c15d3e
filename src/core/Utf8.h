#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tensio {

// The characters of the text; nothing when it is not valid UTF-8. Overlong forms and surrogates are
// invalid.
std::optional<std::u32string> decodeUtf8(std::string_view bytes);

} // namespace tensio
