#include "files/Catalogue.h"

#include <algorithm>
#include <utility>

const CatalogueEntry* Catalogue::Find(WideStringView text) const {
    const auto found = std::ranges::find_if(
        entries, [text](const CatalogueEntry& entry) { return !entry.isObsolete && entry.text == text; });
    return found == entries.end() ? nullptr : &*found;
}

CatalogueEntry* Catalogue::Find(WideStringView text) {
    return const_cast<CatalogueEntry*>(std::as_const(*this).Find(text));
}
