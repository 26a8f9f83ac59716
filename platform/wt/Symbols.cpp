#include "platform/wt/Symbols.h"

namespace wt {

std::unordered_map<std::string, unsigned int> wtSymbols::fragProgs;

void loadFragmentPrograms() {
    wtSymbols::fragProgs["solid_shader"] = 0;
}

}  // namespace wt
