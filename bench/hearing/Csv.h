#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

/// Writes one table of figures: names of the columns first, then a row at a time.
///
///     Csv csv(folder + "/timing.csv", "ear,ahead_s,awards");
///     csv.row("plain", 0.08, 0.941);
///     csv.close();
///
/// Numbers keep six digits. Text may hold commas, but no quotes.
class Csv {
public:
    Csv(const std::string& path, const std::string& columns) : name(path), out(path) {
        out << columns << '\n';
    }

    template <typename First, typename... Others>
    void row(const First& first, const Others&... others) {
        out << cell(first);
        ((out << ',' << cell(others)), ...);
        out << '\n';
    }

    /// Throws std::runtime_error if anything could not be written.
    void close() {
        out.close();
        if (!out) {
            throw std::runtime_error("cannot write " + name);
        }
    }

private:
    template <typename Number>
    static const Number& cell(const Number& number) {
        return number;
    }
    static const char* cell(const char* text) { return text; }
    static std::string cell(const std::string& text) {
        return text.find(',') == std::string::npos ? text : '"' + text + '"';
    }

    std::string name;
    std::ofstream out;
};
