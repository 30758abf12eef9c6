#include "CataloguePage.h"

#include <gmock/gmock.h>

#include <vector>

#include "SampleMaps.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/* No map has a file. */
bool None(const std::string& /*path*/) {
    return false;
}

}  // namespace

TEST(CataloguePage, TellsItsEncoding) {
    const std::string page = CataloguePage({}, 0, None);
    EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page, HasSubstr("<meta charset=\"utf-8\">"));
}

TEST(CataloguePage, RowShowsEveryFieldOfAMap) {
    const std::vector<MapRecord> maps = {
        {"\xC3\x8Ele", 1234, "/maps/ile.map", "An island.", {-100001, 17700000, 5, -1}}};
    EXPECT_THAT(CataloguePage(maps, 1, None),
                HasSubstr("<tr><td class=\"name\"><bdi>\xC3\x8Ele</bdi></td><td class=\"size\">1234</td>"
                          "<td class=\"path\">/maps/ile.map</td>"
                          "<td class=\"area\">-1.00001, 177.00000, 0.00005, -0.00001</td>"
                          "<td dir=\"auto\">An island.</td></tr>"));
}

TEST(CataloguePage, PathOfAFileIsALink) {
    const std::vector maps = {SampleMap("there", {}), SampleMap("absent", {})};
    const auto hasFile = [](const std::string& path) { return path == "/maps/there.map"; };
    const std::string page = CataloguePage(maps, 2, hasFile);
    EXPECT_THAT(page, HasSubstr(">/maps/absent.map</td>"));
    EXPECT_THAT(page, HasSubstr("><a href=\"/maps/there.map\" download>/maps/there.map</a></td>"));
}

TEST(CataloguePage, TextsAreEscaped) {
    const std::vector<MapRecord> maps = {
        {"<script>alert('a')</script>", 1, "/maps/\"&.map", "<b>&amp;</b>", {}}};
    for (const bool hasFile : {false, true}) {
        SCOPED_TRACE(hasFile);
        const std::string page = CataloguePage(maps, 1, [&](const std::string&) { return hasFile; });
        EXPECT_THAT(page, HasSubstr("<bdi>&lt;script&gt;alert(&#39;a&#39;)&lt;/script&gt;</bdi>"));
        EXPECT_THAT(page, HasSubstr(">/maps/&quot;&amp;.map</"));
        EXPECT_THAT(page, HasSubstr(">&lt;b&gt;&amp;amp;&lt;/b&gt;</td>"));
        EXPECT_THAT(page, Not(HasSubstr("<script")));
        EXPECT_THAT(page, Not(HasSubstr("/maps/\"")));
    }
}

TEST(CataloguePage, CountsTheMaps) {
    EXPECT_THAT(CataloguePage({}, 0, None), HasSubstr("<p>0 maps.</p>"));
    EXPECT_THAT(CataloguePage(std::vector{SampleMap("a", {})}, 1, None), HasSubstr("<p>1 map.</p>"));
}

TEST(CataloguePage, SaysWhenItShowsOnlyTheFirstMaps) {
    EXPECT_THAT(CataloguePage(std::vector{SampleMap("a", {}), SampleMap("b", {})}, 9, None),
                HasSubstr("<p>9 maps, of which this page shows the first 2.</p>"));
}
