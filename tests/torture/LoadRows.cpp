/* The rows of the program that loads the library. */
#include "Flow.h"

std::vector<FlowRow> AllRows() {
    return LoadRows({"Load", u"OrvandeOnline", ORVANDE_LIBRARY_FILE});
}

void BeginLibrary(Library /*library*/) {}
void EndLibrary(Library /*library*/) {}
