#include "tools/common/Arguments.h"

#include <charconv>
#include <system_error>

namespace {

template <typename Number>
std::optional<Number> parse(std::string const& text, Number least, Number most) {
    char const* const end = text.data() + text.size();
    Number parsed{};
    auto const [stopped, error] = std::from_chars(text.data(), end, parsed);
    if (error != std::errc() || stopped != end || !(parsed >= least && parsed <= most)) {
        return std::nullopt;
    }
    return parsed;
}

}  // namespace

Arguments::Arguments(std::vector<std::string> const& arguments, std::set<std::string> const& flags,
                     std::set<std::string> const& options) {
    bool onlyFiles = false;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        bool const isFile = onlyFiles || argument->size() < 2 || argument->front() != '-';
        if (isFile) {
            fileNames.push_back(*argument);
            continue;
        }
        if (*argument == "--") {
            onlyFiles = true;
            continue;
        }
        std::string const& name = *argument;
        std::string text;
        if (options.count(name) != 0) {
            if (argument + 1 == arguments.end() || (argument + 1)->empty()) {
                firstProblem = name + " wants a value";
                return;
            }
            text = *++argument;
        } else if (flags.count(name) == 0) {
            firstProblem = "unknown option " + name;
            return;
        }
        if (!found.emplace(name, text).second) {
            firstProblem = name + " was given twice";
            return;
        }
    }
}

std::optional<std::string> Arguments::value(std::string const& option) const {
    auto const entry = found.find(option);
    return entry == found.end() ? std::nullopt : std::optional<std::string>(entry->second);
}

std::optional<double> parseNumber(std::string const& text, double least, double most) {
    return parse(text, least, most);
}

std::optional<int> parseWhole(std::string const& text, int least, int most) {
    return parse(text, least, most);
}
