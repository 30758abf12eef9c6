/* The rows of the program that loads the library. */
#include "Flow.h"

std::vector<FlowRow> AllRows() {
    return LoadRows();
}

void BeginLibrary(Library /*library*/) {}
void EndLibrary(Library /*library*/) {}
