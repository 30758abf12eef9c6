#include "HtmlPage.h"

namespace {

constexpr std::string_view beforeTitle = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>)";

constexpr std::string_view beforeStyle = R"(</title>
<style>
body { font-family: sans-serif; line-height: 1.4; margin: 2em; overflow-wrap: break-word; }
@media (max-width: 64em) {
  body { margin: 0.6em; }
  h1 { font-size: 1.4em; margin: 0.4em 0; }
}
)";

}  // namespace

std::string HtmlPage(std::string_view title, std::string_view style, std::string_view body) {
    std::string page(beforeTitle);
    page += EscapedHtml(title);
    page += beforeStyle;
    page += style;
    page += "</style>\n</head>\n<body>\n";
    page += body;
    page += "</body>\n</html>\n";
    return page;
}

std::string EscapedHtml(std::string_view text) {
    std::string escaped;
    for (const char letter : text) {
        switch (letter) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&#39;";
                break;
            default:
                escaped += letter;
        }
    }
    return escaped;
}
