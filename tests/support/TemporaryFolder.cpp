#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

TemporaryFolder::TemporaryFolder() : before(std::filesystem::current_path()) {
    std::random_device random;
    do {
        folder = std::filesystem::temp_directory_path() / ("zanto-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder));
    std::filesystem::current_path(folder);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::current_path(before, ignored);
    std::filesystem::remove_all(folder, ignored);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& contents) const {
    const std::filesystem::path file = folder / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out << contents;
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + file.string());
    }
    return file.string();
}
