#include "DialogTest.h"

namespace {

constexpr uint16_t dialogType = 5;

class DialogTemplates : public DialogTest {
protected:
    /* Runs template 100 of the library with these bytes; whether it was shown. */
    bool IsShown(const std::string& bytes) {
        device.SetResources(device.LibraryInstance(), {{{dialogType, {}}, {100, {}}, 1033, bytes}});
        SampleDialog dialog;
        const size_t before = device.Dialogs().size();
        User(Cancel);
        dialog.Run();
        const bool isShown = device.Dialogs().size() > before;
        if (!isShown) TakeScript();
        return isShown;
    }

    /* Uses up a script that no dialog took. */
    void TakeScript() {
        auto resources = ReadResourceFile(SIMULATOR_SAMPLE_RESOURCES);
        device.SetResources(device.LibraryInstance(), resources);
        SampleDialog dialog;
        dialog.Run(102);
    }

    static std::string Template(uint16_t id) {
        auto resources = ReadResourceFile(SIMULATOR_SAMPLE_RESOURCES);
        return BytesOf(resources, dialogType, id);
    }
};

}  // namespace

TEST_F(DialogTemplates, PlainFormIsReadWhole) {
    SampleDialog dialog;
    User([](DialogUser& user) {
        const ShownDialog shown = user.Look();
        EXPECT_EQ(15, shown.place.left);
        EXPECT_EQ(32, shown.place.top);
        EXPECT_EQ(150, shown.place.right - shown.place.left);
        ASSERT_EQ(10u, shown.controls.size());
        EXPECT_EQ(u"static", shown.controls[0].className);
        EXPECT_EQ(u"edit", shown.controls[1].className);
        EXPECT_EQ(u"button", shown.controls[4].className);
        EXPECT_EQ(1017, shown.controls[4].id);
        EXPECT_EQ(u"Save password", shown.controls[4].text);
        EXPECT_FALSE(shown.controls[7].isVisible);
        EXPECT_FALSE(shown.controls[8].isEnabled);
        Cancel(user);
    });
    dialog.Run();
}

TEST_F(DialogTemplates, ExtendedFormIsReadWhole) {
    SampleDialog dialog;
    User([](DialogUser& user) {
        const ShownDialog shown = user.Look();
        EXPECT_EQ(u"Extended", shown.caption);
        EXPECT_EQ(LONG{WS_EX_TOPMOST}, GetWindowLongPtrW(user.Window(), GWL_EXSTYLE));
        ASSERT_EQ(2u, shown.controls.size());
        EXPECT_EQ(70000, shown.controls[0].id);
        EXPECT_EQ(u"Text", shown.controls[0].text);
        EXPECT_EQ(1, shown.controls[0].place.left);
        EXPECT_EQ(LONG{WS_EX_TRANSPARENT}, GetWindowLongPtrW(GetDlgItem(user.Window(), 70000), GWL_EXSTYLE));
        EXPECT_EQ(u"edit", shown.controls[1].className);
        Cancel(user);
    });
    dialog.Run(101);
}

TEST_F(DialogTemplates, EveryTruncatedOneIsRefused) {
    for (const uint16_t id : {uint16_t{100}, uint16_t{101}, uint16_t{102}}) {
        const std::string whole = Template(id);
        ASSERT_TRUE(IsShown(whole));
        for (size_t size = 0; size < whole.size(); ++size)
            ASSERT_FALSE(IsShown(whole.substr(0, size))) << id << " cut to " << size;
        EXPECT_EQ(DWORD{ERROR_INVALID_DATA}, [&] {
            device.SetResources(device.LibraryInstance(),
                                {{{dialogType, {}}, {100, {}}, 1033, whole.substr(0, 9)}});
            SampleDialog dialog;
            dialog.Run();
            return GetLastError();
        }());
    }
}

TEST_F(DialogTemplates, MoreControlsThanThereAreIsRefused) {
    std::string bytes = Template(102);
    bytes[8] = '\x02';
    EXPECT_FALSE(IsShown(bytes));
    bytes[8] = bytes[9] = '\xFF';
    EXPECT_FALSE(IsShown(bytes));
}

TEST_F(DialogTemplates, CreationDataBehindTheEndIsRefused) {
    std::string bytes = Template(102);
    bytes[bytes.size() - 2] = '\x10';
    EXPECT_FALSE(IsShown(bytes));
}

TEST_F(DialogTemplates, FewerControlsThanThereAreIsWhatCounts) {
    std::string bytes = Template(100);
    bytes[8] = '\x01';
    EXPECT_TRUE(IsShown(bytes));
    EXPECT_EQ(1u, device.Dialogs().back().controls.size());
}
