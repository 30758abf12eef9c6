/* Text in and out of the console. */
#pragma once

#include <string>
#include <string_view>

/* While an object of this class lives, the console takes the program's output for UTF-8. The console's own
 * setting, which outlives the program, is then restored. */
class Utf8Console {
public:
    Utf8Console();
    ~Utf8Console();
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    unsigned codePage;
};

/* Writes `text` and a line feed to the standard output, as UTF-8. */
void PrintLine(std::wstring_view text);

/* Writes "mapshop: ", `text` and a line feed to the standard error output, as UTF-8. */
void PrintError(std::wstring_view text);

/* Writes `text` to the standard error output as it is, as UTF-8. */
void PrintProgress(std::wstring_view text);

/* Whether the standard error output is a console. */
bool ErrorsAreOnConsole();

/* The program's outputs. */
enum class Output { standard, errors };

/* How many characters fit on a line of an output: the console's own width; where the output is no console,
 * the environment's COLUMNS, and 100 where there is none. At least 40. */
size_t LineWidth(Output output);
