#include "platform/ffont/DriverFunctions.h"

void loadDriverFunctions() {
}
