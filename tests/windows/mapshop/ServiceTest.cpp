/* Searches of the reference service, over real HTTP. */
#include <gtest/gtest.h>

#include <stdexcept>

#include "helpers/ShippedLibrary.h"
#include "helpers/TestServices.h"
#include "helpers/WebProxy.h"

namespace {

/* The port of the service whose catalogue has `count` made-up maps. ORVANDE_TEST_SERVICES lists the running
 * ones, as COUNT:PORT separated by spaces. */
uint16_t PortOfServiceWith(int count) {
    const std::string services = " " + Told("ORVANDE_TEST_SERVICES");
    const std::string wanted = " " + std::to_string(count) + ":";
    const size_t found = services.find(wanted);
    if (found == std::string::npos) throw std::runtime_error("ORVANDE_TEST_SERVICES has none with" + wanted);
    return static_cast<uint16_t>(std::stoul(services.substr(found + wanted.size())));
}

std::wstring SevenDigits(int number) {
    const std::wstring digits = std::to_wstring(number);
    return std::wstring(7 - digits.size(), L'0') + digits;
}

class Service : public testing::TestWithParam<int> {
protected:
    WebProxy proxy{PortOfServiceWith(GetParam())};
    ShippedLibrary library;
};

void ExpectMadeUpMap(int number, int count, const MapShopResult& result) {
    EXPECT_EQ(L"Made-up map " + SevenDigits(number), result.text1);
    EXPECT_EQ(100 + static_cast<int64_t>(number) * 7919 % 60000, result.number);
    EXPECT_EQ(L"/maps/made-up/" + SevenDigits(number) + L".map", result.text2);
    EXPECT_EQ(L"Map " + std::to_wstring(number) + L" of " + std::to_wstring(count) +
                  L", made up for large searches.",
              result.text3);
}

void ExpectWholeCatalogue(int count, const SearchOutcome& outcome) {
    EXPECT_EQ(count, outcome.finalValue);
    ASSERT_EQ(static_cast<size_t>(count), outcome.results.size());
    for (int i = 0; i < count; ++i)
        ExpectMadeUpMap(i + 1, count, outcome.results[static_cast<size_t>(i)]);
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(OfMaps, Service, testing::Values(0, 1, 25, 10000),
                         testing::PrintToStringParamName());

TEST_P(Service, SearchForEverythingBringsEveryFieldOfEveryMap) {
    ExpectWholeCatalogue(GetParam(), library.Search());
}

TEST_P(Service, SearchForTheWholeGlobeBringsTheSame) {
    const int32_t globe[] = {-9000000, -18000000, 9000000, 18000000};
    ExpectWholeCatalogue(GetParam(), library.Search(globe, 1));
}

TEST_P(Service, ItemThatTheServiceRefusesBringsNothing) {
    const int32_t southAboveNorth[] = {100, 0, -100, 0};
    const SearchOutcome outcome = library.Search(southAboveNorth, 1);
    EXPECT_EQ(0U, outcome.results.size());
    EXPECT_EQ(0, outcome.finalValue);
}
