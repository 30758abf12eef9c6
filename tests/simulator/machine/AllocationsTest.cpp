#include "SimulatorTest.h"

#include <memory>
#include <new>

namespace {

class Allocations : public SimulatorTest {
protected:
    /* The outcomes of `count` allocations: + for success, - for failure. */
    static std::string Outcomes(AllocationWatch& watch, int count) {
        char outcomes[16] = {};
        for (int i = 0; i < count; ++i)
            outcomes[i] = Allocates() ? '+' : '-';
        watch.Stop();
        return outcomes;
    }

    static bool Allocates() {
        try {
            ::operator delete(::operator new(10));
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    struct alignas(64) Aligned {
        char bytes[100];
    };
};

}  // namespace

TEST_F(Allocations, EveryFormOfNewCounts) {
    AllocationWatch watch;
    void* const blocks[] = {
        ::operator new(1),
        ::operator new[](1),
        ::operator new(1, std::nothrow),
        ::operator new[](1, std::nothrow),
    };
    const std::align_val_t alignment{64};
    void* const aligned[] = {
        ::operator new(1, alignment),
        ::operator new[](1, alignment),
        ::operator new(1, alignment, std::nothrow),
        ::operator new[](1, alignment, std::nothrow),
    };
    EXPECT_EQ(8u, watch.Count());
    watch.Stop();
    for (void* block : blocks)
        ::operator delete(block);
    for (void* block : aligned) {
        EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(block) % 64);
        ::operator delete(block, alignment);
    }
    EXPECT_EQ(8u, watch.Count());
    EXPECT_FALSE(watch.Failed());
}

TEST_F(Allocations, ContainersAndTheirElementsCount) {
    AllocationWatch watch;
    const auto block = std::make_unique<Aligned>();
    const std::vector<int> numbers(100);
    watch.Stop();
    EXPECT_EQ(2u, watch.Count());
    EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(block.get()) % 64);
}

TEST_F(Allocations, TheNthFailsOnce) {
    AllocationWatch watch(3);
    EXPECT_EQ("++-++", Outcomes(watch, 5));
    EXPECT_TRUE(watch.Failed());
    EXPECT_EQ(5u, watch.Count());
}

TEST_F(Allocations, TheNthAndAllAfterItFail) {
    AllocationWatch watch(2, Failing::FromThereOn);
    EXPECT_EQ("+----", Outcomes(watch, 5));
    EXPECT_TRUE(watch.Failed());
}

TEST_F(Allocations, FailureThatIsNotReachedIsNone) {
    AllocationWatch watch(6);
    EXPECT_EQ("+++++", Outcomes(watch, 5));
    EXPECT_FALSE(watch.Failed());
}

TEST_F(Allocations, FormsThatDoNotThrowGiveNull) {
    AllocationWatch watch(1, Failing::FromThereOn);
    void* const plain = ::operator new(1, std::nothrow);
    void* const array = ::operator new[](1, std::nothrow);
    void* const aligned = ::operator new (1, std::align_val_t{64}, std::nothrow);
    watch.Stop();
    EXPECT_EQ(nullptr, plain);
    EXPECT_EQ(nullptr, array);
    EXPECT_EQ(nullptr, aligned);
}

TEST_F(Allocations, NothingFailsAfterTheWatch) {
    { const AllocationWatch watch(1, Failing::FromThereOn); }
    EXPECT_TRUE(Allocates());
}

TEST_F(Allocations, WhatTheSimulatorAndItsHandlersAllocateDoesNotCount) {
    const std::string body(1000, 'x');
    device.AddHost(u"host.example", 80, [&body](const WebRequest&) { return WebReply::WithBody(body); });
    device.SetRegistryValue(HKEY_CURRENT_USER, u"Software\\A name that is long", u"A value that is long",
                            REG_SZ, body);
    device.AnswerMessageBox(IDOK);
    WCHAR text[200];
    char buffer[10];
    DWORD size = 0;
    HKEY key = nullptr;
    AllocationWatch watch(1, Failing::FromThereOn);
    {
        const OpenRequest open;
        open.Send();
        InternetReadFile(open.request, buffer, sizeof buffer, &size);
        size = sizeof text;
        HttpQueryInfoW(open.request, HTTP_QUERY_CONTENT_LENGTH, text, &size, nullptr);
    }
    RegOpenKeyExW(HKEY_CURRENT_USER, u"Software\\A name that is long", 0, KEY_READ, &key);
    RegQueryValueExW(key, u"A value that is long", nullptr, nullptr, nullptr, &size);
    RegCloseKey(key);
    FILE* const file = _wfopen(u"\\Temp\\a file with a long name", u"w");
    fputs("line with a long text, 5\n", file);
    fclose(file);
    int number = 0;
    swscanf(u"12", u"%i", &number);
    GetFileAttributesW(u"\\Temp\\a file with a long name");
    SHGetSpecialFolderPathW(nullptr, text, CSIDL_PERSONAL, TRUE);
    GetModuleFileNameW(device.LibraryInstance(), text, MAX_PATH);
    MessageBoxW(nullptr, u"A text that is longer than a short string", u"", MB_OK);
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    watch.Stop();
    EXPECT_EQ(0u, watch.Count());
    EXPECT_EQ("line with a long text, 5\r\n", device.TakeFile(u"\\Temp\\a file with a long name"));
}

TEST_F(Allocations, SecondWatchIsAMistakeInTheTest) {
    AllocationWatch watch(1);
    AllocationWatch other;
    EXPECT_FALSE(Allocates()) << "the first one holds on";
    EXPECT_EQ(Lines{"an AllocationWatch begins while another one is on"}, TakeViolations());
}

TEST_F(Allocations, BlocksThatAreNotGivenBackAreCounted) {
    AllocationWatch watch;
    void* const kept = ::operator new(10);
    ::operator delete(::operator new(10));
    EXPECT_EQ(1u, AllocationWatch::BlocksLeft());
    watch.Stop();
    void* const uncounted = ::operator new(10);
    EXPECT_EQ(1u, AllocationWatch::BlocksLeft());
    ::operator delete(uncounted);
    ::operator delete(kept);
    EXPECT_EQ(0u, AllocationWatch::BlocksLeft());
}

TEST_F(Allocations, BlocksOfAnEarlierWatchDoNotCount) {
    AllocationWatch first;
    void* const kept = ::operator new(10);
    first.Stop();
    AllocationWatch second;
    ::operator delete(kept);
    EXPECT_EQ(0u, AllocationWatch::BlocksLeft());
}
