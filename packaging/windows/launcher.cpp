// Plays the installed game in its data folder, as the shell launcher does on other systems.
//
// A player's own songs live in %APPDATA%\zanto\Songs, with a listing.txt of their own; a notes.txt beside
// that folder takes the place of the game's.

#include <windows.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "optionsHelp.h"
#include "packaging/windows/OwnSongs.h"
#include "tools/common/quotedWord.h"

namespace fs = std::filesystem;

namespace {

constexpr int statusWrongUse = 2;
constexpr DWORD statusNoAudioInput = 255;
constexpr DWORD statusNotRecording = 254;

const char* const usage =
    "zanto [OPTION...] [SONG]\n"
    "    Plays the game. SONG is a file of the songs' folder to begin with, such as london_bridge.txt.\n";

const wchar_t* const noMicrophone =
    L"Zanto cannot record: it found no microphone that works.\n\n"
    L"Plug one in, or turn it on in Settings, System, Sound. In Settings, Privacy, Microphone, let desktop "
    L"apps use "
    L"it. Close programs that keep it for themselves.\n\n"
    L"Shall zanto-mic look for the cause?";

fs::path thisFolder() {
    std::array<wchar_t, 32768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return fs::path(path.data()).parent_path();
}

/// Runs a program in a folder to its end; its status, or none when it cannot be started.
std::optional<DWORD> run(const std::wstring& commandLine, const fs::path& folder, DWORD flags = 0) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (flags == 0) {
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
        start.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
        start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    }
    PROCESS_INFORMATION process{};
    std::wstring words = commandLine;
    if (CreateProcessW(nullptr, words.data(), nullptr, nullptr, TRUE, flags | CREATE_SUSPENDED, nullptr,
                       folder.c_str(), &start, &process) == 0) {
        return std::nullopt;
    }
    // What ends this program ends the other one.
    const HANDLE together = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(together, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    AssignProcessToJobObject(together, process.hProcess);
    ResumeThread(process.hThread);
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    CloseHandle(together);
    return status & 0xFFu;
}

/// What the command line asks for.
struct Wish {
    bool isFromMenu = false;
    std::vector<std::wstring> words;  ///< for the game
};

[[noreturn]] void refuse(const std::string& what) {
    std::cerr << "zanto: " << what << "; --help shows what there is" << std::endl;
    std::exit(statusWrongUse);
}

std::string shown(const std::wstring& word) {
    return fs::path(word).u8string();
}

Wish take(const std::vector<std::wstring>& words) {
    Wish wish;
    auto word = words.begin();
    const auto value = [&] { return word + 1 == words.end() ? std::wstring() : *++word; };
    for (; word != words.end(); ++word) {
        if (*word == L"-h" || *word == L"--help") {
            std::cout << usage << optionsHelp << std::endl;
            std::exit(0);
        }
        if (*word == L"--from-menu") {
            wish.isFromMenu = true;
        } else if (*word == L"--ear") {
            const std::wstring ear = value();
            if (ear != L"plain" && ear != L"fine") {
                refuse("--ear takes plain or fine");
            }
            SetEnvironmentVariableW(L"ZANTO_EAR", ear.c_str());
        } else if (*word == L"--input") {
            const std::wstring name = value();
            if (name.empty()) {
                refuse("--input takes the name of a microphone, as zanto-mic list shows it");
            }
            SetEnvironmentVariableW(L"ZANTO_INPUT", name.c_str());
        } else if (*word == L"--spectrum") {
            SetEnvironmentVariableW(L"ZANTO_SPECTRUM", L"1");
        } else if (*word == L"--") {
            ++word;
            break;
        } else if (word->size() > 1 && word->front() == L'-') {
            refuse("unknown option " + shown(*word));
        } else {
            if (word + 1 != words.end() && (word + 1)->rfind(L'-', 0) == 0) {
                refuse(shown(*(word + 1)) + " must come before the song");
            }
            break;
        }
    }
    wish.words.assign(word, words.end());
    return wish;
}

/// Whether anybody sees what the game prints: it was started from a terminal, or its output goes to a file.
bool takeTerminal() {
    const bool isGiven = GetStdHandle(STD_OUTPUT_HANDLE) != nullptr;
    const bool isTerminal = AttachConsole(ATTACH_PARENT_PROCESS) != 0;
    if (isTerminal && !isGiven) {
        std::freopen("CONOUT$", "w", stdout);
        std::freopen("CONOUT$", "w", stderr);
    }
    return isGiven || isTerminal;
}

DWORD play(const fs::path& here, const std::vector<std::wstring>& words, const fs::path& folder) {
    std::wstring line = quotedWord((here / "game" / "zanto.exe").wstring());
    for (const std::wstring& word : words) {
        line += L" " + quotedWord(word);
    }
    const std::optional<DWORD> status = run(line, folder);
    if (!status) {
        std::cerr << "zanto: the game is not beside its launcher" << std::endl;
    }
    return status.value_or(1);
}

DWORD playWithOwnSongs(const fs::path& here, const std::vector<std::wstring>& words) {
    const wchar_t* const settings = _wgetenv(L"APPDATA");
    const fs::path own = fs::path(settings == nullptr ? L"" : settings) / "zanto";
    const fs::path data = here / "data";
    if (settings != nullptr && OwnSongs::areIn(own)) {
        try {
            const OwnSongs view(data, own);
            return play(here, words, view.folder());
        } catch (const fs::filesystem_error&) {
            std::cerr << "zanto: your own songs cannot be laid beside the game's; playing without them."
                      << std::endl;
        }
    }
    return play(here, words, data);
}

}  // namespace

extern "C" int wmain(int count, wchar_t** arguments) {
    const bool isSeen = takeTerminal();
    const Wish wish = take({arguments + 1, arguments + count});
    const fs::path here = thisFolder();
    const DWORD status = playWithOwnSongs(here, wish.words);
    const bool cannotRecord = status == statusNotRecording || status == statusNoAudioInput;
    if (cannotRecord && (wish.isFromMenu || !isSeen) &&
        MessageBoxW(nullptr, noMicrophone, L"Zanto", MB_YESNO | MB_ICONWARNING) == IDYES) {
        run(L"cmd.exe /k \"" + quotedWord((here / "zanto-mic.exe").wstring()) + L" check\"", here,
            CREATE_NEW_CONSOLE);
    }
    return static_cast<int>(status);
}
