/* The operations of a soak, each from its words to the line that tells what came of it. */
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "LMOnline.h"
#include "helpers/ScreenUser.h"

/* What is asked for, without the operation's name. */
using Words = std::vector<std::string>;

class Operations {
public:
    Operations() = default;
    Operations(const Operations&) = delete;
    Operations& operator=(const Operations&) = delete;
    virtual ~Operations() = default;

    /* Number after number, four for each box to search: "CAUSE FINAL HASH ...", a hash for each result. */
    virtual std::string Search(const Words& boxes) = 0;

    /* Path and, from the first one on, the callback that cancels (0: none): "CAUSE RESULT BYTES TOTAL". */
    virtual std::string Download(const Words& words) = 0;

    /* Path, offset, length and the callback that cancels: "CAUSE RESULT HASH". */
    virtual std::string ReadRange(const Words& words) = 0;

    /* Shows the sign-in dialog. User ID, password, and what comes of signing in: "accepted", "message", or
     * "cancel" when the user does not try. After a message he gives up. "CAUSE RESULT MESSAGE". */
    virtual std::string SignIn(const Words& words) = 0;

    /* The same with the dialog that creates an account. */
    virtual std::string Create(const Words& words) = 0;

    /* Everything that was loaded is unloaded and loaded again. */
    virtual void Reload() = 0;
};

/* Those of the finished DLLs. Downloads go to "file.map" of the folder. */
std::unique_ptr<Operations> LibraryOperations(const std::wstring& folder);

/* The same requests, made without the library and without its windows, so that what WinINet itself gathers is
 * known. The answers say nothing. */
std::unique_ptr<Operations> BareOperations(const std::wstring& folder);

/* What the user of each dialog does, as above; the message goes to `shown`. */
ScreenUser::Script SignInScript(const Words& words, std::wstring& shown);
ScreenUser::Script CreationScript(const Words& words, std::wstring& shown);

/* The callback that cancels at the call of that number (0: at none); its context is an int that begins with
 * the number. */
int LM_CALL CountDown(void* left);

/* CRC-32, as eight hexadecimal digits. */
class Hash {
public:
    void Take(const void* data, size_t size);
    [[nodiscard]] std::string Text() const;

private:
    uint32_t value = 0xFFFFFFFF;
};
