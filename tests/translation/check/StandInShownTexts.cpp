/* A few texts of every kind in place of this version's. */
#include "texts/ShownTexts.h"

namespace {

constexpr TextPlace title[] = {{TextKind::Title, "Everywhere", "src/ui/Boxes.cpp:3", 0, 0}};
constexpr TextPlace caption[] = {{TextKind::Caption, "Sign in", "src/ui/Sample.rc:3", 0, 0}};
constexpr TextPlace signIn[] = {{TextKind::Label, "Sign in", "src/account/SignIn.cpp:25", 60, 8}};
constexpr TextPlace wide[] = {{TextKind::Label, "Sign in", "src/ui/Sample.rc:4", 90, 17}};
constexpr TextPlace box[] = {{TextKind::CheckBox, "Sign in", "src/ui/Sample.rc:5", 48, 10}};
constexpr TextPlace softKey[] = {{TextKind::SoftKey, "Sign in", "src/ui/Sample.rc:6", 0, 0},
                                 {TextKind::MenuItem, "Create", "src/ui/Sample.rc:7", 0, 0}};
constexpr TextPlace menuItem[] = {{TextKind::MenuItem, "Create", "src/ui/Sample.rc:8", 0, 0}};
constexpr TextPlace message[] = {{TextKind::Message, "Create", "src/ui/Boxes.cpp:5", 0, 0}};
constexpr TextPlace everywhere[] = {{TextKind::Message, "Everywhere", "src/ui/Boxes.cpp:7", 0, 0},
                                    {TextKind::SoftKey, "Sign in", "src/ui/Boxes.cpp:9", 0, 0}};

constexpr ShownText texts[] = {
    {u"Sample", false, title},
    {u"Welcome", false, caption},
    {u"User ID:", false, signIn},
    {u"Press \"I Forgot\".", false, signIn},
    {u"If you have an account", false, wide},
    {u"Save it", false, box},
    {u"Forgot", false, softKey},
    {u"&Open...", false, menuItem},
    {u"New Account", false, menuItem},
    {u"Account", false, menuItem},
    {u"Menu", false, softKey},
    {u"Select Menu / New Account", false, wide},
    {u"It failed.\nTry again.", false, message},
    {u"%d maps", true, everywhere},
};

}  // namespace

std::span<const ShownText> AllShownTexts() {
    return texts;
}
