#include "SimulatorTest.h"

namespace {

class Loader : public SimulatorTest {
protected:
    LoadedLibrary Load() { return device.LoadLibraryFile(SIMULATOR_SAMPLE_FILE); }
};

const Lines fullLife = {
    R"(InternetOpenW("Sample", 0, null, null, 0x00000000) = session 1)",
    "SHInitExtraControls(library, 1, null) = TRUE",
    "SHInitExtraControls(library, 0, null) = TRUE",
    "InternetCloseHandle(session 1) = TRUE",
};

}  // namespace

TEST_F(Loader, StaticObjectsLiveFromBeforeAttachToAfterDetach) {
    LoadedLibrary library = Load();
    EXPECT_TRUE(library.IsLoaded());
    EXPECT_EQ(2u, device.Calls().size());
    library.Unload();
    EXPECT_FALSE(library.IsLoaded());
    EXPECT_EQ(fullLife, device.Calls());
    library.Unload();
    EXPECT_EQ(4u, device.Calls().size());
}

TEST_F(Loader, UnloadsAtTheLatestWhenTheObjectGoes) {
    { const LoadedLibrary library = Load(); }
    EXPECT_EQ(fullLife, device.Calls());
}

TEST_F(Loader, ExportsAreFoundByName) {
    const LoadedLibrary library = Load();
    auto* const count = library.Find<int()>("CountCallsSinceLoad");
    ASSERT_NE(nullptr, count);
    EXPECT_EQ(1, count());
    EXPECT_EQ(nullptr, library.Find<int()>("NoSuchExport"));
    EXPECT_EQ(nullptr, LoadedLibrary().Find<int()>("CountCallsSinceLoad"));
}

TEST_F(Loader, EveryLoadStartsAnew) {
    for (int i = 0; i < 3; ++i) {
        const LoadedLibrary library = Load();
        EXPECT_EQ(1, library.Find<int()>("CountCallsSinceLoad")());
    }
}

TEST_F(Loader, OwnershipMoves) {
    LoadedLibrary first = Load();
    LoadedLibrary second = std::move(first);
    EXPECT_FALSE(first.IsLoaded());  // NOLINT(bugprone-use-after-move): what is left is promised
    EXPECT_TRUE(second.IsLoaded());
    second = LoadedLibrary();
    EXPECT_EQ(fullLife, device.Calls());
}

TEST_F(Loader, LibraryThatRefusesToAttachIsUnloaded) {
    device.FailCall("SHInitExtraControls", 1, 1);
    EXPECT_FALSE(Load().IsLoaded());
    EXPECT_EQ("InternetCloseHandle(session 1) = TRUE", device.Calls().back());
}

TEST_F(Loader, LibraryThatStaysLoadedIsAViolation) {
    LoadedLibrary first = Load();
    LoadedLibrary second = Load();
    second.Unload();
    const Lines violations = TakeViolations();
    ASSERT_EQ(1u, violations.size());
    EXPECT_NE(std::string::npos, violations[0].find("stays loaded"));
}

TEST_F(Loader, FileThatIsNoLibraryIsAMistakeInTheTest) {
    EXPECT_FALSE(device.LoadLibraryFile("/nonexistent/library.so").IsLoaded());
    EXPECT_FALSE(device.LoadLibraryFile(SIMULATOR_NO_LIBRARY_FILE).IsLoaded());
    EXPECT_EQ(2u, TakeViolations().size());
}

TEST_F(Loader, SessionThatTheLibraryForgetsIsReported) {
    device.FailCall("InternetCloseHandle", 1, 1);
    { const LoadedLibrary library = Load(); }
    EXPECT_EQ("InternetCloseHandle(session 1) = FALSE, error 1", device.Calls().back());
}

TEST_F(Loader, OnlyWhatTheLibraryAllocatesCounts) {
    const std::string file = SIMULATOR_SAMPLE_FILE;
    AllocationWatch watch;
    LoadedLibrary library = device.LoadLibraryFile(file);
    EXPECT_EQ(2u, watch.Count()) << "the static object, and attach";
    library.Unload();
    EXPECT_EQ(3u, watch.Count()) << "detach, too";
    watch.Stop();
    EXPECT_EQ(fullLife, device.Calls());
}

TEST_F(Loader, UnloadsWhenMemoryHasRunOutBehindTheLastAllocationOfTheLibrary) {
    const std::string file = SIMULATOR_SAMPLE_FILE;
    AllocationWatch watch(4, Failing::FromThereOn);
    LoadedLibrary library = device.LoadLibraryFile(file);
    library.Unload();
    watch.Stop();
    EXPECT_FALSE(watch.Failed());
    EXPECT_EQ(fullLife, device.Calls());
}

TEST_F(Loader, ViolationsNeedNoneOfTheLibrarysMemory) {
    const std::string file = "/nonexistent/library.so";
    AllocationWatch watch(1, Failing::FromThereOn);
    EXPECT_FALSE(device.LoadLibraryFile(file).IsLoaded());
    watch.Stop();
    EXPECT_FALSE(watch.Failed());
    EXPECT_EQ(1u, TakeViolations().size());
}
