#include "platform/settings/Settings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

constexpr const char* variable = "ZANTO_TEST_SETTING";

struct Example {
    const char* value;  ///< null for an unset variable
    double result;
    std::string told;
};

class SettingsTest : public testing::TestWithParam<Example> {
protected:
    SettingsTest() {
        if (GetParam().value != nullptr) {
            setenv(variable, GetParam().value, 1);
        }
        CaptureStderr();
    }
    ~SettingsTest() override { unsetenv(variable); }
};

using SettingsChoice = SettingsTest;
using SettingsNumber = SettingsTest;

}  // namespace

TEST_P(SettingsChoice, IsOneOfTheWordsOrTheFirst) {
    EXPECT_EQ(settings::choice(variable, {"plain", "fine"}), static_cast<std::size_t>(GetParam().result));
    EXPECT_EQ(GetCapturedStderr(), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(
    Values, SettingsChoice,
    testing::Values(Example{nullptr, 0, ""}, Example{"", 0, ""}, Example{"plain", 0, ""},
                    Example{"fine", 1, ""},
                    Example{"Fine", 0,
                            "ZANTO_TEST_SETTING: \"Fine\" is not one of plain fine. plain is used.\n"}));

TEST_P(SettingsNumber, IsInItsRangeOrTheUsualOne) {
    EXPECT_EQ(settings::number(variable, -24, 480, 440), GetParam().result);
    EXPECT_EQ(GetCapturedStderr(), GetParam().told.empty()
                                       ? ""
                                       : "ZANTO_TEST_SETTING: \"" + GetParam().told +
                                             "\" is not a number from -24 to 480. 440 is used.\n");
}

INSTANTIATE_TEST_SUITE_P(Values, SettingsNumber,
                         testing::Values(Example{nullptr, 440, ""}, Example{"", 440, ""},
                                         Example{"442.5", 442.5, ""}, Example{"-24", -24, ""},
                                         Example{"480", 480, ""}, Example{"480.1", 440, "480.1"},
                                         Example{"-25", 440, "-25"}, Example{"nan", 440, "nan"},
                                         Example{"440 Hz", 440, "440 Hz"}, Example{"high", 440, "high"}));
