#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tensio {

// The characters of the text; nothing when it is not valid UTF-8 (overlong forms and surrogates are
// not).
std::optional<std::u32string> decodeUtf8(std::string_view bytes);

} // namespace tensio
