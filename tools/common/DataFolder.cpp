#include "tools/common/DataFolder.h"

#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

bool holdsData(fs::path const& folder) {
    std::error_code ignored;
    return fs::is_regular_file(folder / "notes.txt", ignored);
}

}  // namespace

std::optional<fs::path> findDataFolder(std::optional<std::string> const& asked) {
    std::error_code ignored;
    return findDataFolder(asked, fs::read_symlink("/proc/self/exe", ignored));
}

std::optional<fs::path> findDataFolder(std::optional<std::string> const& asked, fs::path const& program) {
    std::error_code ignored;
    fs::path const here = fs::current_path(ignored);
    std::vector<fs::path> places;
    if (asked) {
        places.push_back(here / *asked);
    } else {
        places = {here, here / "data"};
        fs::path const folder = program.parent_path();
        for (fs::path above = folder; above != above.parent_path(); above = above.parent_path()) {
            places.push_back(above / "data");
        }
        places.push_back(folder.parent_path() / "share" / "games" / "zanto");
    }
    for (fs::path const& place : places) {
        if (holdsData(place)) {
            return place;
        }
    }
    return std::nullopt;
}

WorkingFolder::WorkingFolder(fs::path const& folder) : before(fs::current_path()) {
    fs::current_path(folder);
}

WorkingFolder::~WorkingFolder() {
    std::error_code ignored;
    fs::current_path(before, ignored);
}
