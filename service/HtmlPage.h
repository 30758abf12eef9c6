/* What all pages of the service share. */
#pragma once

#include <string>
#include <string_view>

/* A whole HTML page in UTF-8, as wide as the screen that shows it, a handheld's too. `title` is text; `style`
 * (CSS) and `body` (HTML) are taken as they are. */
std::string HtmlPage(std::string_view title, std::string_view style, std::string_view body);

/* Text as HTML that shows it, in content and in quoted attributes. */
std::string EscapedHtml(std::string_view text);
