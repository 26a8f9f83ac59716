#include "tests/support/DocumentedExample.h"

#include <fstream>
#include <stdexcept>

std::string documentedOutput(const std::string& page, const std::string& command) {
    std::ifstream in(page);
    std::string line;
    bool inBlock = false;
    bool found = false;
    std::string output;
    while (std::getline(in, line)) {
        if (line.rfind("```", 0) == 0) {
            inBlock = !inBlock;
        }
        const bool isBorder = line.rfind("```", 0) == 0 || line.rfind("$ ", 0) == 0;
        if (found && isBorder) {
            return output;
        }
        if (found) {
            output += line + "\n";
        }
        found = found || (inBlock && line == "$ " + command);
    }
    throw std::runtime_error("no example \"$ " + command + "\" in " + page);
}
