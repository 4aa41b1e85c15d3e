#include <clocale>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

// Every test program follows the locale of its environment, as the program does. One that the
// system does not have would change nothing, and so test nothing.
class Locale : public testing::Environment {
    void SetUp() override
    {
        std::setlocale(LC_ALL, "");
        if (auto const* point = std::getenv("TENSIO_DECIMAL_POINT")) {
            ASSERT_STREQ(std::localeconv()->decimal_point, point);
        }
    }
};

[[maybe_unused]] auto* const locale = testing::AddGlobalTestEnvironment(new Locale);

} // namespace
