#include <zip.h>
#include <pugixml.hpp>

#include <memory>

#include "tools/common/Files.h"
#include "tools/zanto-song/SheetMusic.h"

namespace {

/// The files of a zip archive in memory.
class Archive {
public:
    explicit Archive(const std::string& contents) {
        zip_error_t error;
        zip_error_init(&error);
        zip_source_t* const source = zip_source_buffer_create(contents.data(), contents.size(), 0, &error);
        archive.reset(source == nullptr ? nullptr
                                        : zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error));
        const std::string reason = archive ? "" : zip_error_strerror(&error);
        zip_error_fini(&error);
        if (!archive) {
            zip_source_free(source);
            throw Failure("it is a damaged archive (" + reason + ")");
        }
    }

    /// Unpacks one file, at most `mostSheetBytes` of it.
    std::string read(const std::string& name) const {
        zip_stat_t status;
        zip_stat_init(&status);
        if (zip_stat(archive.get(), name.c_str(), 0, &status) != 0) {
            throw Failure("there is no " + name + " in the archive");
        }
        const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(
            zip_fopen(archive.get(), name.c_str(), 0), zip_fclose);
        if (!file) {
            throw Failure(name + " cannot be unpacked");
        }
        // What the archive says about the size may be wrong.
        std::string text;
        std::string block(65536, '\0');
        zip_int64_t count = 0;
        while ((count = zip_fread(file.get(), block.data(), block.size())) > 0) {
            text.append(block, 0, static_cast<std::size_t>(count));
            if (text.size() > mostSheetBytes) {
                throw Failure(name + " is larger than " + std::to_string(mostSheetBytes >> 20) +
                              " MiB when unpacked");
            }
        }
        if (count < 0) {
            throw Failure(name + " cannot be unpacked");
        }
        return text;
    }

private:
    std::unique_ptr<zip_t, void (*)(zip_t*)> archive{nullptr, zip_discard};
};

}  // namespace

SheetMusic readCompressedMusicXml(const std::string& contents) {
    const Archive archive(contents);
    pugi::xml_document container;
    const std::string list = archive.read("META-INF/container.xml");
    container.load_buffer(list.data(), list.size());
    // The first one is the score, the others are the same in other forms.
    const std::string root =
        container.child("container").child("rootfiles").child("rootfile").attribute("full-path").value();
    if (root.empty()) {
        throw Failure("META-INF/container.xml does not say which file is the score");
    }
    return readMusicXml(archive.read(root));
}
