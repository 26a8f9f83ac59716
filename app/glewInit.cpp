#include "app/glewInit.h"

void glewInit() {
}
