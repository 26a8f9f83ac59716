#include "platform/wt/Theme.h"

namespace wt {

Theme& theme() {
    static Theme current;
    return current;
}

}  // namespace wt
