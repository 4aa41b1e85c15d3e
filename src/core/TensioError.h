#pragma once

#include "platform/Error.h"

#include <optional>
#include <string>

namespace tensio {

// The system's own failures; the custom message is what the user reads.
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
