/* How the shipped languages are written: what a reader of the language would call a slip. */
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "files/Files.h"
#include "files/Quoted.h"
#include "texts/ShownTexts.h"
#include "texts/WidthsOfTahoma.h"

using testing::IsEmpty;

namespace {

constexpr WCHAR noBreakSpace = u'\u00A0';

using IsSlip = bool (*)(const ShownText& shown, const WideString& translation);

/* The translations of a language that have it, quoted. */
std::vector<std::string> WithSlip(const std::string& language, IsSlip isSlip) {
    Complaints complaints;
    const Catalogue catalogue = ReadCatalogue(ORVANDE_LANGUAGES "/" + language + ".txt", complaints);
    EXPECT_THAT(catalogue.entries, testing::SizeIs(AllShownTexts().size())) << language;
    std::vector<std::string> found;
    for (const CatalogueEntry& entry : catalogue.entries) {
        const ShownText* const shown = FindShownText(entry.text);
        if (shown != nullptr && isSlip(*shown, entry.translation)) found.push_back(Quoted(entry.translation));
    }
    return found;
}

bool IsMessage(const ShownText& shown) {
    return shown.places.front().kind == TextKind::Message;
}

bool HasStraightMarks(const ShownText&, const WideString& translation) {
    return translation.find_first_of(u"'\"") != WideString::npos;
}

bool HasFaultOfSpace(const ShownText&, const WideString& translation) {
    for (size_t at = 0; at < translation.size(); ++at) {
        const WCHAR unit = translation[at];
        const bool wantsBefore = WideStringView(u";:!?\u00BB").find(unit) != WideStringView::npos;
        if (wantsBefore && (at == 0 || translation[at - 1] != noBreakSpace)) return true;
        if (unit == u'\u00AB' && translation.substr(at + 1, 1) != WideString(1, noBreakSpace)) return true;
    }
    return false;
}

bool HasQuotesOfOthers(const ShownText&, const WideString& translation) {
    return translation.find_first_of(u"\u00AB\u00BB\u201D") != WideString::npos ||
           std::ranges::count(translation, u'\u201E') != std::ranges::count(translation, u'\u201C');
}

class LanguageTypography : public testing::TestWithParam<std::string> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Shipped, LanguageTypography, testing::Values("French", "German"),
                         [](const auto& language) { return language.param; });

TEST_P(LanguageTypography, ItHasCharactersOfTheHandheldsFontAlone) {
    EXPECT_THAT(WithSlip(GetParam(),
                         [](const ShownText&, const WideString& translation) {
                             return std::ranges::any_of(translation, [](WCHAR unit) {
                                 return unit != u'\n' && WidthInTahoma(static_cast<char16_t>(unit)) < 0;
                             });
                         }),
                IsEmpty());
}

TEST_P(LanguageTypography, MessagesAreSentencesAndNothingElseIs) {
    EXPECT_THAT(WithSlip(GetParam(),
                         [](const ShownText& shown, const WideString& translation) {
                             return translation.ends_with(u'.') != IsMessage(shown);
                         }),
                IsEmpty());
}

TEST_P(LanguageTypography, AColonLeadsOnWhereTheEnglishDoes) {
    EXPECT_THAT(WithSlip(GetParam(),
                         [](const ShownText& shown, const WideString& translation) {
                             return translation.ends_with(u':') != WideStringView(shown.text).ends_with(u':');
                         }),
                IsEmpty());
}

TEST_P(LanguageTypography, NoApostropheOrQuotationMarkIsTheTypewriters) {
    EXPECT_THAT(WithSlip(GetParam(), HasStraightMarks), IsEmpty());
}

TEST(LanguageTypographyOf, FrenchHasNoBreakSpacesWithItsMarks) {
    EXPECT_THAT(WithSlip("French", HasFaultOfSpace), IsEmpty());
}

TEST(LanguageTypographyOf, GermanQuotesBelowAndAbove) {
    EXPECT_THAT(WithSlip("German", HasQuotesOfOthers), IsEmpty());
}
