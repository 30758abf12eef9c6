/* An application in C, which the import library binds to the DLL. */
#include <gtest/gtest.h>

#include "helpers/ChildProcess.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScriptedServer.h"
#include "helpers/WebProxy.h"
#include "support/MapShopReply.h"

TEST(PlainC, SearchesThroughTheImportLibrary) {
    ScriptedServer server;
    const WebProxy proxy(server.Port());
    server.Answer(MapShopReply().Int32(0).Int32(1).Map(L"Alps", -5, L"/a.map", L"Text").Int32(38).bytes);
    const ChildOutcome outcome = RunChild(L"\"" + ProgramFolder() + L"\\plain-c.exe\"", ProgramFolder());
    EXPECT_EQ(0U, outcome.exitCode);
    EXPECT_EQ("Alps|-5|/a.map|Text\n38\n", outcome.output);
}
