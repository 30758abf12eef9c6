#include "ShownTexts.h"

#include "ui/Ornaments.h"

const ShownText* FindShownText(WideStringView text) {
    const ShownText* withOrnaments = nullptr;
    for (const ShownText& shown : AllShownTexts()) {
        if (shown.text == text) return &shown;
        if (withOrnaments == nullptr && WithoutOrnaments(shown.text) == text) withOrnaments = &shown;
    }
    return withOrnaments;
}
