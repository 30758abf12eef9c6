/* Dialogs on the simulated handheld, and the boxes that tell of their failures. */
#pragma once

#include "ui/Dialog.h"

#include <string>
#include <string_view>
#include <vector>

#include "support/ScreenTest.h"
#include "ui/FormDialog.h"

class DialogOnDevice : public ScreenTest {
protected:
    void ExpectBox(size_t index, std::u16string_view text) {
        ASSERT_LT(index, device.MessageBoxes().size());
        const ShownMessageBox& box = device.MessageBoxes()[index];
        EXPECT_EQ(text, box.text);
        EXPECT_EQ(u"Internal error", box.caption);
        EXPECT_EQ(UINT{MB_ICONHAND}, box.flags);
    }

    const std::vector<std::string> noCalls{};
};
