#pragma once

#include <string>

/// What a page of documentation says that a command prints: in a block of the page, the lines that follow
/// "$ COMMAND" up to the block's end or the next command. Throws std::runtime_error when there is none.
std::string documentedOutput(const std::string& page, const std::string& command);
