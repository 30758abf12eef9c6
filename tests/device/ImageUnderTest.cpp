/* The library under the tests that call its exports: the image, loaded anew for each of them. */
#include "LMOnline.h"
#include "support/NetworkTest.h"

namespace {

LoadedLibrary& Library() {
    static auto& library = *new LoadedLibrary;
    return library;
}

void ReportFailure(const std::string& what) {
    ADD_FAILURE() << what;
}

template <class Function>
Function* Exported(const char* name) {
    auto* const function = Library().Find<Function>(name);
    if (function == nullptr) throw std::runtime_error(std::string("the image does not export ") + name);
    return function;
}

}  // namespace

void NetworkTest::SetUp() {
    Device::Current().SetViolationHook(ReportFailure);
    Library() = Device::Current().LoadLibraryFile(ORVANDE_LIBRARY_FILE);
    DeviceTest::SetUp();
}

void NetworkTest::TearDown() {
    DeviceTest::TearDown();
    Device::Current().SetViolationHook(ReportFailure);
    Library().Unload();
    Device::Current().SetViolationHook(nullptr);
}

MapShopSearch* LM_CALL LMMapShopSearch(const void* items, int32_t count) {
    return Exported<decltype(LMMapShopSearch)>(__func__)(items, count);
}

int32_t LM_CALL LMMapShopGetNext(MapShopSearch* search, MapShopResult* record) {
    return Exported<decltype(LMMapShopGetNext)>(__func__)(search, record);
}

int32_t LM_CALL LMMapShopClose(MapShopSearch* search) {
    return Exported<decltype(LMMapShopClose)>(__func__)(search);
}

int32_t LM_CALL LMDownloadWebFileProgress(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                                          LMProgressCallback callback, void* context,
                                          DownloadProgress* progress) {
    return Exported<decltype(LMDownloadWebFileProgress)>(__func__)(host, urlPath, localFile, callback,
                                                                   context, progress);
}

int32_t LM_CALL x77fc64c7(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                          LMProgressCallback callback, void* context) {
    return Exported<decltype(x77fc64c7)>(__func__)(host, urlPath, localFile, callback, context);
}

int32_t LM_CALL xfa704a3f(const LMChar* host, const LMChar* urlPath, int64_t offset, int32_t length,
                          void* buffer, LMProgressCallback callback, void* context) {
    return Exported<decltype(xfa704a3f)>(__func__)(host, urlPath, offset, length, buffer, callback, context);
}
