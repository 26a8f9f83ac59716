#include "app/glewInit.h"

#include "platform/ffont/DriverFunctions.h"

void glewInit() {
    loadDriverFunctions();
}
