#include <filesystem>

#include "tools/common/Command.h"
#include "tools/common/DataFolder.h"
#include "tools/zanto-song/Page.h"

namespace fs = std::filesystem;

namespace {

constexpr double pixelsPerMillimetre = 200.0 / 25.4;

}  // namespace

void expectPictureName(const std::string& option, const std::string& name) {
    const std::string kind = fs::u8path(name).extension().string();
    if (kind != ".png" && kind != ".svg") {
        throw WrongUse(option + " wants a name that ends in .png or .svg");
    }
}

std::string toPicture(const Page& page, const std::string& name, const std::optional<std::string>& asked) {
    if (fs::u8path(name).extension() == ".svg") {
        return toSvg(page);
    }
    const fs::path data = findDataFolder(asked).value_or(".");
    return toPng(page, pixelsPerMillimetre, (data / "Fonts" / "Vera.ttf").string());
}
