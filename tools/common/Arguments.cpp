#include "tools/common/Arguments.h"

#include <charconv>
#include <system_error>

#include "tools/common/Command.h"
#include "tools/common/Text.h"

namespace {

template <typename Number>
std::optional<Number> parse(const std::string& text, Number least, Number most) {
    const char* const end = text.data() + text.size();
    Number parsed{};
    const auto [stopped, error] = std::from_chars(text.data(), end, parsed);
    if (error != std::errc() || stopped != end || !(parsed >= least && parsed <= most)) {
        return std::nullopt;
    }
    return parsed;
}

}  // namespace

Arguments::Arguments(const std::vector<std::string>& arguments, const std::set<std::string>& flags,
                     const std::set<std::string>& options) {
    bool onlyFiles = false;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const std::string& name = *argument;
        if (onlyFiles || name.size() < 2 || name.front() != '-') {
            fileNames.push_back(name);
            continue;
        }
        if (name == "--") {
            onlyFiles = true;
            continue;
        }
        std::string text;
        if (options.count(name) != 0) {
            if (argument + 1 == arguments.end() || (argument + 1)->empty()) {
                throw WrongUse(name + " wants a value");
            }
            text = *++argument;
        } else if (flags.count(name) == 0) {
            throw WrongUse("unknown option " + name);
        }
        if (!found.emplace(name, text).second) {
            throw WrongUse(name + " was given twice");
        }
    }
}

std::optional<std::string> Arguments::value(const std::string& option) const {
    const auto entry = found.find(option);
    return entry == found.end() ? std::nullopt : std::optional<std::string>(entry->second);
}

std::optional<double> Arguments::number(const std::string& option, double least, double most,
                                        const std::string& wanted) const {
    const std::optional<std::string> text = value(option);
    const std::optional<double> parsed = text ? parseNumber(*text, least, most) : std::nullopt;
    if (text && !parsed) {
        throw WrongUse(option + " wants " + wanted);
    }
    return parsed;
}

std::optional<int> Arguments::whole(const std::string& option, int least, int most,
                                    const std::string& wanted) const {
    const std::optional<std::string> text = value(option);
    const std::optional<int> parsed = text ? parseWhole(*text, least, most) : std::nullopt;
    if (text && !parsed) {
        throw WrongUse(option + " wants " + wanted);
    }
    return parsed;
}

const std::string& Arguments::onlyFile(const std::string& what) const {
    if (fileNames.size() != 1) {
        throw WrongUse(fileNames.empty() ? "which " + what + "?" : "one " + what + " at a time");
    }
    return fileNames.front();
}

void Arguments::expectNoFiles() const {
    if (!fileNames.empty()) {
        throw WrongUse(quoted(fileNames.front()) + " is not an option");
    }
}

std::optional<double> parseNumber(const std::string& text, double least, double most) {
    return parse(text, least, most);
}

std::optional<int> parseWhole(const std::string& text, int least, int most) {
    return parse(text, least, most);
}
