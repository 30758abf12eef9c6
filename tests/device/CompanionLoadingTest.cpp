/* Both images in one process, as an application loads them that uses both. */
#include "companion/CompanionTest.h"

#include "DeviceHeap.h"
#include "Imports.h"
#include "LMOnline.h"
#include "MappedImage.h"

namespace {

using Entry = BOOL WINAPI(HINSTANCE instance, DWORD reason, LPVOID reserved);

class CompanionLoading : public CompanionTest {
protected:
    static BOOL CallEntry(const MappedImage& image, DWORD reason) {
        return reinterpret_cast<Entry*>(image.Entry())(Device::Current().LibraryInstance(), reason, nullptr);
    }

    void ExpectSearch(const MappedImage& online) {
        Answer(MapShopReply().Int32(0).Int32(0).Int32(24));
        auto* const search =
            reinterpret_cast<decltype(&LMMapShopSearch)>(online.Export("LMMapShopSearch"))(nullptr, 0);
        EXPECT_EQ(24, reinterpret_cast<decltype(&LMMapShopClose)>(online.Export("LMMapShopClose"))(search));
    }

    void ExpectSignIn(const MappedImage& account) {
        Accept();
        const LMAccountRecord record = Record(TEXT("Anna"), TEXT("secret1"));
        ExpectSuccess(reinterpret_cast<LMAccountSignInFunction>(account.Export("LMAccountSignIn"))(&record));
    }
};

}  // namespace

TEST_F(CompanionLoading, BothImagesWorkInEitherOrderAndWithoutEachOther) {
    const size_t blocks = DeviceHeapBlocks();
    for (const bool isFirst : {true, false}) {
        SCOPED_TRACE(isFirst);
        const MappedImage online(ORVANDE_LIBRARY_FILE, 0x20000000, FindImport);
        const MappedImage account(ORVANDE_ACCOUNT_FILE, 0x30000000, FindImport);
        ASSERT_TRUE(CallEntry(isFirst ? account : online, DLL_PROCESS_ATTACH));
        ASSERT_TRUE(CallEntry(isFirst ? online : account, DLL_PROCESS_ATTACH));
        ExpectSearch(online);
        ExpectSignIn(account);
        EXPECT_TRUE(CallEntry(isFirst ? account : online, DLL_PROCESS_DETACH));
        if (isFirst) {
            ExpectSearch(online);
        } else {
            ExpectSignIn(account);
        }
        EXPECT_TRUE(CallEntry(isFirst ? online : account, DLL_PROCESS_DETACH));
        EXPECT_EQ(blocks, DeviceHeapBlocks());
    }
}

TEST_F(CompanionLoading, OpensNoInternetSessionUntilItIsAsked) {
    EXPECT_EQ(0u, device.CountCalls("InternetOpenW"));
}

TEST_F(CompanionLoading, WhereverMemoryRunsOutTheImageIsLoadedOrRefusedAndLeavesNothing) {
    const size_t blocks = DeviceHeapBlocks();
    for (size_t n = 1;; ++n) {
        SCOPED_TRACE(n);
        const MappedImage image(ORVANDE_ACCOUNT_FILE, 0x30000000, FindImport);
        bool hasFailed = false;
        BOOL isAttached = FALSE;
        {
            const AllocationWatch watch(n);
            isAttached = CallEntry(image, DLL_PROCESS_ATTACH);
            hasFailed = watch.Failed();
        }
        if (isAttached != FALSE) CallEntry(image, DLL_PROCESS_DETACH);
        EXPECT_EQ(blocks, DeviceHeapBlocks());
        if (!hasFailed) {
            EXPECT_TRUE(isAttached);
            break;
        }
        ASSERT_LT(n, 50u);
    }
}
