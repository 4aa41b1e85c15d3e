#pragma once

#include "platform/Error.h"

#include <optional>
#include <string>

namespace tensio {

// A failure of the program's own; the user reads its custom message.
class TensioError : public Error {
public:
    static constexpr auto domainName = "jp.tensio.tensio";
    static constexpr int noDevicePort = 1;

    explicit TensioError(int code)
        : Error(domainName, code)
    {
    }

    std::optional<std::string> customMessage;

    std::string localizedDescription() const override
    {
        return customMessage.value_or(std::string());
    }
};

} // namespace tensio
