#include "tools/common/DataFolder.h"

#include <system_error>
#include <vector>

#include "tools/common/Command.h"
#include "tools/common/RunProgram.h"

namespace fs = std::filesystem;

namespace {

bool holdsData(const fs::path& folder) {
    std::error_code ignored;
    return fs::is_regular_file(folder / "notes.txt", ignored);
}

}  // namespace

std::optional<fs::path> findDataFolder(const std::optional<std::string>& asked) {
    return findDataFolder(asked, thisProgram());
}

fs::path requireDataFolder(const std::optional<std::string>& asked) {
    if (const std::optional<fs::path> found = findDataFolder(asked)) {
        return *found;
    }
    throw Failure("the game's notes.txt is not found; say where it is with --data FOLDER");
}

std::optional<fs::path> findDataFolder(const std::optional<std::string>& asked, const fs::path& program) {
    std::error_code ignored;
    const fs::path here = fs::current_path(ignored);
    std::vector<fs::path> places;
    if (asked) {
        places.push_back(here / fs::u8path(*asked));
    } else {
        places = {here, here / "data"};
        const fs::path folder = program.parent_path();
        for (fs::path above = folder; above != above.parent_path(); above = above.parent_path()) {
            places.push_back(above / "data");
        }
        places.push_back(folder / ZANTO_DATA_FROM_PROGRAMS);
    }
    for (const fs::path& place : places) {
        if (holdsData(place)) {
            return place;
        }
    }
    return std::nullopt;
}

WorkingFolder::WorkingFolder(const fs::path& folder) : before(fs::current_path()) {
    fs::current_path(folder);
}

WorkingFolder::~WorkingFolder() {
    std::error_code ignored;
    fs::current_path(before, ignored);
}
