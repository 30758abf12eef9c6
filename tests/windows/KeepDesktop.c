/* Has a desktop until its input ends. The first program that needs one under Wine waits a second for it, and
 * the process that makes it holds that program's output open for as long as anybody needs it. */
#include <windows.h>

int main(void) {
    char byte;
    DWORD count = 0;
    GetDesktopWindow();
    while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &count, NULL) && count > 0) {
    }
    return 0;
}
