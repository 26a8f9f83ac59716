#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// A command's arguments, sorted into flags, options with a value, and files. Everything that is wrong with
/// them throws WrongUse.
///
///     const Arguments given(arguments, {"--json"}, {"-o", "--gap"});
///     if (given.has("--json")) ...
///     const double gap = given.number("--gap", 0.0, 0.4, "seconds, 0 to 0.4").value_or(0.12);
class Arguments {
public:
    /// `flags` stand alone, `options` take the argument that follows. All other arguments are files; after
    /// "--" every argument is one.
    Arguments(const std::vector<std::string>& arguments, const std::set<std::string>& flags,
              const std::set<std::string>& options);

    bool has(const std::string& flag) const { return found.count(flag) != 0; }

    /// The option's value, none when it was not given.
    std::optional<std::string> value(const std::string& option) const;

    /// The value as a number from `least` to `most`. `wanted` says in the message what it should have been.
    std::optional<double> number(const std::string& option, double least, double most,
                                 const std::string& wanted) const;
    std::optional<int> whole(const std::string& option, int least, int most, const std::string& wanted) const;

    const std::vector<std::string>& files() const { return fileNames; }

    /// The only file. `what` names it in the message: "song".
    const std::string& onlyFile(const std::string& what) const;

    void expectNoFiles() const;

private:
    std::map<std::string, std::string> found;  ///< flags with an empty value
    std::vector<std::string> fileNames;
};

/// The whole of `text` as a number from `least` to `most`; none for anything else.
std::optional<double> parseNumber(const std::string& text, double least, double most);
std::optional<int> parseWhole(const std::string& text, int least, int most);
