/* The rows of the program that has the whole library linked into it. */
#include "Flow.h"

std::vector<FlowRow> AllRows() {
    std::vector<FlowRow> all;
    for (const auto rows : {SearchRows, DownloadRows, SecureRows, CompanionRows, CompanionDialogRows,
                            RefusedAccountRows, DialogRows, MessageRows, FileRows}) {
        for (FlowRow& row : rows())
            all.push_back(std::move(row));
    }
    return all;
}
