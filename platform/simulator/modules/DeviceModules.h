/* The modules' part of the device: the program, the library and others, with their resources. */
#pragma once

#include "Platform.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "modules/LoadedLibrary.h"
#include "modules/ResourceFile.h"

class DeviceModules {
public:
    // ---- Modules --------------------------------------------------------------------------------------

    /* The library's instance handle: what a loaded library is given, and what a test gives to a library that
     * is linked in. */
    HINSTANCE LibraryInstance() const;

    /* Where the library's file lies on the device: \Program Files\App\OrvandeOnline.dll at first. */
    void SetLibraryPath(std::u16string_view path);

    /* Loads a shared build from a file of this computer, runs its static initialisers and calls its DllMain
     * with DLL_PROCESS_ATTACH. That there is no such file or no DllMain is a violation. The program must
     * export its symbols (ENABLE_EXPORTS) and must not link the library itself. */
    LoadedLibrary LoadLibraryFile(const std::string& file);

    /* The instance handle of the program that loads the library. */
    HINSTANCE ProgramInstance() const;

    /* Puts a further module on the device, which LoadLibraryW finds by the name of its file, whatever the
     * case and the folder. It has no code. Gone after the test. */
    HINSTANCE AddModule(std::u16string_view fileName);

    /* How often an added module was loaded less how often it was freed. Freeing one that is not loaded is a
     * violation, one that stays loaded is none. */
    size_t ModuleReferences(HINSTANCE module) const;

    // ---- Resources ------------------------------------------------------------------------------------

    /* What a module's resources are until the next BeginTest, in place of all it has. */
    void SetResources(HINSTANCE module, std::vector<Resource> resources);

    /* What the resources of the program or the library are from the next BeginTest on, in every test: for a
     * program of tests to set once. */
    void SetDefaultResources(HINSTANCE module, std::vector<Resource> resources);

protected:
    void Reset();
};
