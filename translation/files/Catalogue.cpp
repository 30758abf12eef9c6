#include "files/Catalogue.h"

#include <algorithm>
#include <utility>

CatalogueField FieldOfLine(WideStringView line) {
    const size_t colon = line.find(u':');
    if (colon == WideStringView::npos || colon == 0) return {{}, WideString(line)};
    WideStringView value = line.substr(colon + 1);
    if (value.starts_with(u' ')) value.remove_prefix(1);
    return {WideString(line.substr(0, colon)), WideString(value)};
}

WideString LineOfField(const CatalogueField& field) {
    return field.name.empty() ? field.value : field.name + u": " + field.value;
}

const CatalogueEntry* Catalogue::Find(WideStringView text) const {
    const auto found = std::ranges::find_if(
        entries, [text](const CatalogueEntry& entry) { return !entry.isObsolete && entry.text == text; });
    return found == entries.end() ? nullptr : &*found;
}

CatalogueEntry* Catalogue::Find(WideStringView text) {
    return const_cast<CatalogueEntry*>(std::as_const(*this).Find(text));
}
