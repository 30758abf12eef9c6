/* Stands in for a browser: writes its second argument, the address, to the file that the first one names. The
 * file is there only when it is whole. */
#include <stdio.h>

#include <windows.h>

int main(int count, char** arguments) {
    char unfinished[MAX_PATH];
    FILE* file;
    if (count != 3) return 2;
    snprintf(unfinished, sizeof unfinished, "%s.new", arguments[1]);
    file = fopen(unfinished, "wb");
    if (file == NULL) return 1;
    fputs(arguments[2], file);
    fclose(file);
    return MoveFileA(unfinished, arguments[1]) ? 0 : 1;
}
