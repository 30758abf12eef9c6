/* What the translators' program holds for the widths of texts, beside what the system says of the same
 * font. */
#include "texts/TextWidth.h"
#include "texts/WidthsOfTahoma.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "account/AccountScreenTest.h"
#include "base/OwnedFile.h"
#include "helpers/DialogTemplate.h"
#include "ui/TranslationFile.h"

namespace {

/* The font of the dialogs, there for this process alone while the object lives. */
class Tahoma {
public:
    Tahoma() { isThere = AddFontResourceExW(file, FR_PRIVATE, nullptr) != 0; }
    ~Tahoma() {
        if (isThere) RemoveFontResourceExW(file, FR_PRIVATE, nullptr);
    }
    Tahoma(const Tahoma&) = delete;
    Tahoma& operator=(const Tahoma&) = delete;

    [[nodiscard]] bool IsThere() const { return isThere; }

private:
    static constexpr WCHAR file[] = L"Z:\\usr\\share\\wine\\fonts\\tahoma.ttf";
    bool isThere;
};

/* A place to draw, with Tahoma of that height in pixels. */
class Drawing {
public:
    explicit Drawing(int height) {
        LOGFONTW wanted{};
        wanted.lfHeight = height;
        wanted.lfWeight = FW_NORMAL;
        wanted.lfCharSet = DEFAULT_CHARSET;
        wcscpy(wanted.lfFaceName, L"Tahoma");
        font = CreateFontIndirectW(&wanted);
        former = SelectObject(context, font);
    }
    ~Drawing() {
        SelectObject(context, former);
        DeleteObject(font);
        DeleteDC(context);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    [[nodiscard]] std::wstring Face() const {
        WCHAR face[LF_FACESIZE]{};
        GetTextFaceW(context, LF_FACESIZE, face);
        return face;
    }

    [[nodiscard]] int LineHeight() const {
        TEXTMETRICW metrics{};
        GetTextMetricsW(context, &metrics);
        return metrics.tmHeight;
    }

    /* As text is drawn here, with hints. */
    [[nodiscard]] int Width(char16_t unit) const {
        int width = -1;
        GetCharWidth32W(context, unit, unit, &width);
        return width;
    }

    [[nodiscard]] int WidthOfBitmap(char16_t unit) const {
        const MAT2 identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
        GLYPHMETRICS metrics{};
        if (GetGlyphOutlineW(context, unit, GGO_BITMAP, &metrics, 0, nullptr, &identity) == GDI_ERROR)
            return -1;
        return metrics.gmCellIncX;
    }

    [[nodiscard]] SIZE Broken(const std::wstring& text, int width) const {
        RECT place{0, 0, width, 0};
        DrawTextW(context, text.c_str(), -1, &place, DT_CALCRECT | DT_WORDBREAK);
        return {place.right, place.bottom};
    }

private:
    HDC context = CreateCompatibleDC(nullptr);
    HFONT font;
    HGDIOBJ former;
};

class TextWidths : public AccountScreenTest {
protected:
    void SetUp() override {
        AccountScreenTest::SetUp();
        ASSERT_TRUE(tahoma.IsThere()) << "there is no Tahoma (tools/setup windows)";
        ASSERT_EQ(L"Tahoma", drawing.Face()) << "the font is there, but the system does not take it";
    }

    /* Every character of the table. */
    static void ForEach(bool isBitmap, const std::function<void(char16_t unit)>& look) {
        size_t count = 0;
        for (const TahomaRange& range : widthsOfTahoma) {
            if (range.isBitmap != isBitmap) continue;
            for (char32_t unit = range.first; unit <= range.last; ++unit, ++count)
                look(static_cast<char16_t>(unit));
        }
        EXPECT_LT(400U, count);
    }

    /* The shipped translations, and the English texts. */
    static std::vector<std::wstring> TextsOfLanguages() {
        std::vector<std::wstring> texts;
        for (const WCHAR* file : {ORVANDE_LANGUAGES L"French.txt", ORVANDE_LANGUAGES L"German.txt"}) {
            const FileHandle opened(_wfopen(file, L"rb"));
            TranslationTable table;
            if (opened) ReadTranslations(opened.Get(), table);
            EXPECT_FALSE(table.empty());
            for (const auto& [text, translation] : table)
                texts.insert(texts.end(), {text.Text(), translation});
        }
        return texts;
    }

    /* The text in letters alone, which this system draws as wide as the table says: with hints it draws some
     * wider. */
    std::wstring InLettersAsWide(std::wstring text) const {
        constexpr WCHAR other = L'o';
        EXPECT_EQ(WidthInTahoma(other), drawing.Width(other));
        for (WCHAR& unit : text) {
            const bool isAsWide = IsCharAlphaW(unit) && drawing.Width(unit) == WidthInTahoma(unit);
            if (!isAsWide && !wcschr(L" \n&", unit)) unit = other;
        }
        return text;
    }

    static std::wstring WithSpaceBehindLines(std::wstring text) {
        for (size_t at = 0; (at = text.find(L'\n', at)) != std::wstring::npos; at += 2)
            text.insert(at, L" ");
        return text + L" ";
    }

    // The first of the two: the font has to be there when it is selected.
    const Tahoma tahoma;
    const Drawing drawing{-emOfTahoma};
};

}  // namespace

TEST_F(TextWidths, AreThoseOfTheFontsBitmaps) {
    ForEach(true, [this](char16_t unit) {
        EXPECT_EQ(drawing.WidthOfBitmap(unit), WidthInTahoma(unit)) << "U+" << std::hex << int{unit};
    });
    EXPECT_EQ(drawing.LineHeight(), heightOfTahoma);
}

TEST_F(TextWidths, OfCharactersWithoutBitmapAreTheDesignsScaledAndRounded) {
    constexpr int em = 2048;
    const Drawing design(-em);
    ForEach(false, [&](char16_t unit) {
        const int scaled = (design.Width(unit) * emOfTahoma * 2 + em) / (em * 2);
        EXPECT_EQ(scaled, WidthInTahoma(unit)) << "U+" << std::hex << int{unit};
    });
}

TEST_F(TextWidths, ControlsAreAsWideAndAsHighAsTheSystemMakesThem) {
    SignInAs([](const ScreenUser& user) {
        const HWND dialog = user.WaitForDialog(account_texts::signInCaption);
        const DialogTemplate read = ReadDialogTemplate(GetModuleHandleW(nullptr), SIGN_IN_DIALOG);
        HWND child = GetWindow(dialog, GW_CHILD);
        for (const TemplateControl& control : read.controls) {
            RECT place{};
            GetClientRect(child, &place);
            const TextRoom room = RoomAt({TextKind::Label, "", "", control.width, control.height});
            if (control.systemClass == 0x82) {
                EXPECT_EQ(place.right, room.width);
                EXPECT_EQ(place.bottom / heightOfTahoma, room.lines);
            }
            child = GetWindow(child, GW_HWNDNEXT);
        }
        ChooseCancel(user, dialog);
    });
}

TEST_F(TextWidths, TextsAreBrokenWhereTheSystemBreaksThem) {
    std::vector<std::wstring> texts = TextsOfLanguages();
    texts.insert(texts.end(), {L"one\n\n\ntwo &three", L"Wo &Wo Wo Wo Wo Wo Wo Wo Wo Wo Wo Wo Wo &Wo"});
    for (const std::wstring& each : texts) {
        const std::wstring text = InLettersAsWide(each);
        for (const int units : {107, 150, 200}) {
            SCOPED_TRACE(testing::PrintToString(text) + " in " + std::to_string(units));
            const TextPlace place{TextKind::Label, "", "", units, 100};
            const TextRoom needed = NeededRoom(place, text);
            // This system counts the space at which it breaks a line, too.
            const int space = WidthInTahoma(L' ');
            const SIZE drawn = drawing.Broken(WithSpaceBehindLines(text), RoomAt(place).width + space);
            EXPECT_EQ(drawn.cy, needed.lines * heightOfTahoma);
            EXPECT_EQ(drawn.cx, needed.width + space);
        }
    }
}
