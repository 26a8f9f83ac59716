#include "tools/common/Ear.h"

#include "platform/settings/Settings.h"
#include "tools/common/Command.h"

void chooseEar(const Arguments& given) {
    const std::optional<std::string> name = given.value("--ear");
    if (!name) {
        return;
    }
    if (*name != "plain" && *name != "fine") {
        throw WrongUse("--ear wants plain or fine, not \"" + *name + "\"");
    }
    settings::set("ZANTO_EAR", *name);
}
