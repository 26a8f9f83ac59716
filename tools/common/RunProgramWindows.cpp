#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <array>

#include "tools/common/Command.h"
#include "tools/common/RunProgram.h"
#include "tools/common/quotedWord.h"

namespace fs = std::filesystem;

namespace {

fs::path temporaryFile() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    std::array<wchar_t, MAX_PATH + 1> file{};
    if (GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()) == 0 ||
        GetTempFileNameW(folder.data(), L"zan", 0, file.data()) == 0) {
        throw Failure("there is no place for a temporary file");
    }
    return fs::path(file.data());
}

HANDLE handleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

}  // namespace

// Others open it by its name, so it cannot be one that goes away by itself.
MemoryFile::MemoryFile() : descriptor(-1), name(temporaryFile().string()) {
    descriptor = _wsopen(fs::u8path(name).c_str(), _O_RDWR | _O_BINARY | _O_NOINHERIT, _SH_DENYNO,
                         _S_IREAD | _S_IWRITE);
    if (descriptor == -1) {
        throw Failure("there is no place for a temporary file");
    }
}

MemoryFile::~MemoryFile() {
    _close(descriptor);
    DeleteFileW(fs::u8path(name).c_str());
}

std::string MemoryFile::contents() const {
    std::string text;
    std::array<char, 65536> block{};
    int count = 0;
    _lseek(descriptor, 0, SEEK_SET);
    while ((count = _read(descriptor, block.data(), block.size())) > 0) {
        text.append(block.data(), static_cast<std::size_t>(count));
    }
    return text;
}

fs::path thisProgram() {
    std::array<wchar_t, 32768> path{};
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return std::wstring(path.data(), length);
}

std::optional<ProgramResult> runProgram(const std::vector<std::string>& command) {
    std::wstring line;
    for (const std::string& word : command) {
        line += (line.empty() ? L"" : L" ") + quotedWord(fs::u8path(word).wstring());
    }
    const MemoryFile out;
    const MemoryFile errors;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = handleOf(out.getDescriptor());
    start.hStdError = handleOf(errors.getDescriptor());
    for (const HANDLE stream : {start.hStdOutput, start.hStdError}) {
        SetHandleInformation(stream, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    }
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr,
                       &start, &process) == 0) {
        return std::nullopt;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return ProgramResult{static_cast<int>(status), out.contents(), errors.contents()};
}
