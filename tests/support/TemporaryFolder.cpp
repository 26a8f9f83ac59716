#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

TemporaryFolder::TemporaryFolder() : before(std::filesystem::current_path()) {
    std::string name = (std::filesystem::temp_directory_path() / "zanto-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("cannot make a temporary folder");
    }
    folder = name;
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
