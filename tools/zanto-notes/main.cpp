#include <iostream>

#include "tools/zanto-notes/TableModel.h"

int main() {
    writeTable(std::cout, tableRows(TableModel()));
    return 0;
}
