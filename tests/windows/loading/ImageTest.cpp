/* The DLL's file. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "helpers/LocalFiles.h"
#include "helpers/PeImage.h"
#include "helpers/ProgramFolder.h"
#include "support/ExportList.h"

namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::StartsWith;

class Image : public testing::Test {
protected:
    PeImage image{ProgramFolder() + L"\\OrvandeOnline.dll"};
};

}  // namespace

TEST_F(Image, IsADllFor32BitWindows) {
    EXPECT_EQ(IMAGE_FILE_MACHINE_I386, image.Machine());
    EXPECT_TRUE(image.IsDll());
}

TEST_F(Image, ExportsExactlyTheFunctionsOfTheHeaderUndecorated) {
    std::istringstream definitions(ContentOf(ProgramFolder() + L"\\Exports.def"));
    const std::set<std::string> names = ReadExportList(definitions);
    EXPECT_THAT(image.ExportedNames(), ElementsAreArray(names));
    EXPECT_EQ(names.size(), image.ExportedFunctionCount());
}

TEST_F(Image, ImportsOnlyModulesOfTheSystem) {
    for (const auto& [module, names] : image.Imports()) {
        EXPECT_THAT(module, AnyOf("advapi32.dll", "kernel32.dll", "msvcrt.dll", "shell32.dll", "user32.dll",
                                  "wininet.dll", "aygshell.dll", "cellcore.dll"));
    }
}

TEST_F(Image, ImportsTheShellLibraryByOrdinal) {
    EXPECT_THAT(image.Imports()["aygshell.dll"], ElementsAre("#9"));
}

TEST_F(Image, ImportsTheConnectionManagerByName) {
    EXPECT_THAT(image.Imports()["cellcore.dll"],
                ElementsAre("ConnMgrEstablishConnectionSync", "ConnMgrMapURL", "ConnMgrReleaseConnection"));
}

TEST_F(Image, HasNoDebugInformationButAReferenceToIt) {
    EXPECT_EQ(0U, image.SymbolCount());
    bool refers = false;
    for (const std::string& name : image.SectionNames()) {
        // Names that are longer than eight characters are kept as "/" and a number.
        EXPECT_THAT(name, testing::Not(StartsWith(".debug")));
        refers = refers || name.starts_with("/") || name.starts_with(".gnu_de");
    }
    EXPECT_TRUE(refers);
}
