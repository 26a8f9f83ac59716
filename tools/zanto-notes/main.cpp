#include "tools/zanto-notes/notesCommand.h"

int main(int argc, char** argv) {
    return runCommand("zanto-notes", [&] { return notesCommand({argv + 1, argv + argc}); });
}
