#include "CataloguePage.h"

#include <gmock/gmock.h>

#include <vector>

#include "SampleMaps.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(CataloguePage, TellsItsEncoding) {
    const std::string page = CataloguePage({}, 0);
    EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page, HasSubstr("<meta charset=\"utf-8\">"));
}

TEST(CataloguePage, RowShowsEveryFieldOfAMap) {
    const std::vector<MapRecord> maps = {
        {"\xC3\x8Ele", 1234, "/maps/ile.map", "An island.", {-100001, 17700000, 5, -1}}};
    EXPECT_THAT(CataloguePage(maps, 1),
                HasSubstr("<tr><td>\xC3\x8Ele</td><td class=\"number\">1234</td><td>/maps/ile.map</td>"
                          "<td class=\"number\">-1.00001, 177.00000, 0.00005, -0.00001</td>"
                          "<td>An island.</td></tr>"));
}

TEST(CataloguePage, TextsAreEscaped) {
    const std::vector<MapRecord> maps = {
        {"<script>alert('a')</script>", 1, "/maps/\"&.map", "<b>&amp;</b>", {}}};
    const std::string page = CataloguePage(maps, 1);
    EXPECT_THAT(page, HasSubstr("<td>&lt;script&gt;alert(&#39;a&#39;)&lt;/script&gt;</td>"));
    EXPECT_THAT(page, HasSubstr("<td>/maps/&quot;&amp;.map</td>"));
    EXPECT_THAT(page, HasSubstr("<td>&lt;b&gt;&amp;amp;&lt;/b&gt;</td>"));
    EXPECT_THAT(page, Not(HasSubstr("<script")));
}

TEST(CataloguePage, CountsTheMaps) {
    EXPECT_THAT(CataloguePage({}, 0), HasSubstr("<p>0 maps.</p>"));
    EXPECT_THAT(CataloguePage(std::vector{SampleMap("a", {})}, 1), HasSubstr("<p>1 map.</p>"));
}

TEST(CataloguePage, SaysWhenItShowsOnlyTheFirstMaps) {
    EXPECT_THAT(CataloguePage(std::vector{SampleMap("a", {}), SampleMap("b", {})}, 9),
                HasSubstr("<p>9 maps, of which this page shows the first 2.</p>"));
}
