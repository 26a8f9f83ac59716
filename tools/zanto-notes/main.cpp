#include <iostream>

#include "tools/zanto-notes/notesCommand.h"

int main(int argc, char** argv) {
    return notesCommand({argv + 1, argv + argc}, std::cout, std::cerr);
}
