#pragma once

#include <string>
#include <vector>

/// Environment variables that a player sets. An unusable value causes one line on standard error, which
/// names the variable, its value and the choices; the default is used then. Unset and empty mean the default.
namespace settings {

/// Sets a variable as a player would.
void set(const char* variable, const std::string& value);

/// The variable's text, empty when it is unset.
std::string text(const char* variable);

/// Which of the words the variable is; the first one is the default.
std::size_t choice(const char* variable, const std::vector<std::string>& words);

/// The variable's number, from `least` to `most`.
double number(const char* variable, double least, double most, double usual);
int wholeNumber(const char* variable, int least, int most, int usual);

}  // namespace settings
