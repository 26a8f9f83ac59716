#include "platform/settings/Settings.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>

namespace settings {

namespace {

double numberLike(bool isWhole, const char* variable, double least, double most, double usual) {
    const std::string value = text(variable);
    if (value.empty()) {
        return usual;
    }
    char* end = nullptr;
    const double given = std::strtod(value.c_str(), &end);
    const bool isKind = !isWhole || given == std::floor(given);
    if (*end == '\0' && given >= least && given <= most && isKind) {
        return given;
    }
    std::cerr << variable << ": \"" << value << "\" is not a " << (isWhole ? "whole " : "") << "number from "
              << least << " to " << most << ". " << usual << " is used." << std::endl;
    return usual;
}

}  // namespace

void set(const char* variable, const std::string& value) {
#ifdef _WIN32
    _putenv_s(variable, value.c_str());
#else
    setenv(variable, value.c_str(), 1);
#endif
}

std::string text(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? "" : value;
}

std::size_t choice(const char* variable, const std::vector<std::string>& words) {
    const std::string value = text(variable);
    const auto word = std::find(words.begin(), words.end(), value);
    if (word != words.end()) {
        return static_cast<std::size_t>(word - words.begin());
    }
    if (!value.empty()) {
        std::cerr << variable << ": \"" << value << "\" is not one of";
        for (const std::string& known : words) {
            std::cerr << ' ' << known;
        }
        std::cerr << ". " << words.front() << " is used." << std::endl;
    }
    return 0;
}

double number(const char* variable, double least, double most, double usual) {
    return numberLike(false, variable, least, most, usual);
}

int wholeNumber(const char* variable, int least, int most, int usual) {
    return static_cast<int>(numberLike(true, variable, least, most, usual));
}

}  // namespace settings
