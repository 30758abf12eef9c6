#include "resources/ResourceIds.h"

#include "support/ScreenTest.h"

namespace {

/* Reads a resource from its beginning to its end; what is not there reads as 0. */
class ResourceReader {
public:
    explicit ResourceReader(std::string resource) : bytes(std::move(resource)) {}

    uint16_t Word() {
        const uint16_t low = Byte();
        return static_cast<uint16_t>(low | Byte() << 8);
    }
    uint32_t Long() {
        const uint32_t low = Word();
        return low | uint32_t{Word()} << 16;
    }
    std::u16string Text() {
        std::u16string text;
        while (const char16_t unit = Word())
            text += unit;
        return text;
    }
    void AlignToLong() { position = (position + 3) / 4 * 4; }
    [[nodiscard]] bool IsAtEnd() const { return position == bytes.size(); }

private:
    uint8_t Byte() { return position < bytes.size() ? static_cast<uint8_t>(bytes[position++]) : 0; }

    std::string bytes;
    size_t position = 0;
};

constexpr uint16_t button = 0x80, edit = 0x81, staticText = 0x82;
constexpr DWORD visibleChild = WS_CHILD | WS_VISIBLE;
constexpr DWORD field = visibleChild | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL;

struct Item {
    uint16_t id, kind;
    DWORD style;
    std::u16string text;
    uint16_t x, y, width, height;
    bool operator==(const Item&) const = default;
};

Item Label(const char16_t* text, uint16_t x, uint16_t y, uint16_t width, uint16_t height) {
    return {0xFFFF, staticText, visibleChild | WS_GROUP, text, x, y, width, height};
}

void PrintTo(const Item& item, std::ostream* out) {
    *out << item.id << " kind " << item.kind << " style " << item.style << " at " << item.x << "," << item.y
         << "," << item.width << "," << item.height << " \""
         << std::string(item.text.begin(), item.text.end()) << '"';
}

class UserInterface : public ScreenTest {
protected:
    static ResourceReader Find(uint16_t type, uint16_t name) {
        for (const Resource& resource : ReadResourceFile(ORVANDE_TEST_RESOURCES)) {
            if (resource.type.number != type || resource.name.number != name) continue;
            EXPECT_EQ(1033, resource.language);
            return ResourceReader(resource.bytes);
        }
        ADD_FAILURE() << "there is no resource " << type << " " << name;
        return ResourceReader("");
    }

    static void ExpectWords(uint16_t name, const std::vector<uint16_t>& expected) {
        ResourceReader reader = Find(10, name);
        for (const uint16_t word : expected)
            EXPECT_EQ(word, reader.Word());
        EXPECT_TRUE(reader.IsAtEnd());
    }

    static void ExpectDialog(uint16_t name, const char16_t* caption, uint16_t width, uint16_t height,
                             const std::vector<Item>& expected) {
        ResourceReader reader = Find(5, name);
        EXPECT_EQ(DWORD{WS_POPUP | WS_VISIBLE | WS_CAPTION}, reader.Long() & ~DWORD{DS_SETFONT});
        EXPECT_EQ(0u, reader.Long());
        const uint16_t count = reader.Word();
        EXPECT_EQ(0, reader.Word());
        EXPECT_EQ(0, reader.Word());
        EXPECT_EQ(width, reader.Word());
        EXPECT_EQ(height, reader.Word());
        EXPECT_EQ(0, reader.Word()) << "no menu";
        EXPECT_EQ(0, reader.Word()) << "the dialogs' own class";
        EXPECT_EQ(caption, reader.Text());
        EXPECT_EQ(8, reader.Word());
        EXPECT_EQ(u"Tahoma", reader.Text());
        std::vector<Item> items;
        for (uint16_t i = 0; i < count; ++i)
            items.push_back(NextItem(reader));
        EXPECT_EQ(expected, items);
    }

    static Item NextItem(ResourceReader& reader) {
        Item item{};
        reader.AlignToLong();
        item.style = reader.Long();
        EXPECT_EQ(0u, reader.Long());
        item.x = reader.Word();
        item.y = reader.Word();
        item.width = reader.Word();
        item.height = reader.Word();
        item.id = reader.Word();
        EXPECT_EQ(0xFFFF, reader.Word());
        item.kind = reader.Word();
        item.text = reader.Text();
        EXPECT_EQ(0, reader.Word());
        return item;
    }
};

}  // namespace

TEST_F(UserInterface, TextsOfTheMenuBarsAreInTheStringTable) {
    const std::pair<UINT, const char16_t*> texts[] = {
        {2000, u"Done"}, {2001, u"Cancel"}, {2002, u"Menu"}, {2007, u"Sign in"}};
    for (const auto& [id, text] : texts) {
        WCHAR buffer[20]{};
        LoadStringW(device.LibraryInstance(), id, buffer, 20);
        EXPECT_EQ(std::u16string(text), buffer);
    }
}

TEST_F(UserInterface, DefaultMenuBarHasTwoPlainButtons) {
    ExpectWords(115, {115, 2, 65534, 1, 4, 16, 2000, 0, 65535, 65534, 2, 4, 16, 2001, 0, 65535});
}

TEST_F(UserInterface, SignInMenuBarHasAPlainButtonAndADropDown) {
    ExpectWords(107, {107, 2, 65534, 1, 4, 16, 2007, 0, 65535, 65534, 0, 4, 24, 2002, 0, 1});
}

TEST_F(UserInterface, SignInDialogHasItsControlsAtTheirPlaces) {
    ExpectDialog(
        107, u"Sign in to Your Account", 100, 90,
        {Label(u"New Users:", 1, 2, 67, 8),
         Label(u"Select Menu / New Account", 4, 10, 93, 8),
         Label(u"If you already have an account:", 1, 23, 94, 17),
         Label(u"User ID", 2, 43, 35, 8),
         {1001, edit, field, u"", 43, 41, 54, 12},
         Label(u"Password", 0, 60, 37, 8),
         {1003, edit, field | ES_PASSWORD, u"", 43, 58, 54, 12},
         {1017, button, visibleChild | WS_TABSTOP | BS_AUTOCHECKBOX, u"Save password", 34, 75, 65, 10}});
}

TEST_F(UserInterface, CreateAccountDialogHasItsControlsAtTheirPlaces) {
    ExpectDialog(
        108, u"Create Account", 97, 97,
        {Label(u"User ID", 0, 4, 35, 8),
         {1001, edit, field, u"", 38, 2, 57, 12},
         Label(u"Password", 0, 20, 35, 8),
         {1003, edit, field | ES_PASSWORD, u"", 38, 18, 57, 12},
         Label(u"Retype", 4, 36, 31, 8),
         {1005, edit, field | ES_PASSWORD, u"", 38, 34, 57, 12},
         Label(u"Your name", 0, 52, 36, 8),
         {1006, edit, field, u"", 38, 50, 57, 12},
         Label(u"Email", 0, 68, 32, 8),
         {1010, edit, field, u"", 38, 66, 57, 12},
         {1012, button, visibleChild | BS_AUTOCHECKBOX, u"Email product update info", 3, 81, 94, 10}});
}
