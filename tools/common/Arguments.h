#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// A command's arguments sorted into flags, options with a value, and files.
///
///     Arguments const given(arguments, {"--json"}, {"-o"});
///     if (!given.problem().empty()) ...
///     if (given.has("--json")) ...
class Arguments {
public:
    /// `flags` stand alone, `options` take the argument that follows. All other arguments are files, after
    /// "--" those too that begin with a dash.
    Arguments(std::vector<std::string> const& arguments, std::set<std::string> const& flags,
              std::set<std::string> const& options);

    /// What is wrong with the arguments: an unknown option, a missing value, an option given twice. Empty
    /// when nothing is.
    std::string const& problem() const { return firstProblem; }

    bool has(std::string const& flag) const { return found.count(flag) != 0; }

    /// The option's value, none when it was not given.
    std::optional<std::string> value(std::string const& option) const;

    std::vector<std::string> const& files() const { return fileNames; }

private:
    std::map<std::string, std::string> found;  ///< flags with an empty value
    std::vector<std::string> fileNames;
    std::string firstProblem;
};

/// The whole of `text` as a number from `least` to `most`; none for anything else.
std::optional<double> parseNumber(std::string const& text, double least, double most);
std::optional<int> parseWhole(std::string const& text, int least, int most);
