/* The exported functions: arguments are checked, exceptions are stopped, the work is done elsewhere. */
#include "Platform.h"

#include <new>

#include "LMOnline.h"
#include "base/Contained.h"
#include "mapshop/MapShopSearch.h"
#include "transport/WebDownload.h"

MapShopSearch* LM_CALL LMMapShopSearch(const void* items, int32_t count) {
    auto* const search = new (std::nothrow) MapShopSearch;
    if (search == nullptr) return nullptr;
    // When memory runs out on the way, the results already read are kept.
    if (MapShopSearch::AreItems(items, count)) RunContained([&] { search->Run(items, count); });
    return search;
}

int32_t LM_CALL LMMapShopGetNext(MapShopSearch* search, MapShopResult* record) {
    if (search == nullptr || record == nullptr) return 0;
    return search->GetNext(*record) ? 1 : 0;
}

int32_t LM_CALL LMMapShopClose(MapShopSearch* search) {
    if (search == nullptr) return 0;
    const int32_t finalValue = search->FinalValue();
    delete search;
    return finalValue;
}

int32_t LM_CALL LMDownloadWebFileProgress(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                                          LMProgressCallback callback, void* context,
                                          DownloadProgress* progress) {
    if (host == nullptr || urlPath == nullptr || localFile == nullptr) return 0;
    return Contained(0, [&] {
        WebConnection connection(host, true, false);
        connection.progressCallback = callback;
        connection.callbackContext = context;
        connection.progress = progress;
        return DownloadWebFile(connection, urlPath, localFile) ? 1 : 0;
    });
}

int32_t LM_CALL x77fc64c7(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                          LMProgressCallback callback, void* context) {
    return LMDownloadWebFileProgress(host, urlPath, localFile, callback, context, nullptr);
}

int32_t LM_CALL xfa704a3f(const LMChar* host, const LMChar* urlPath, int64_t offset, int32_t length,
                          void* buffer, LMProgressCallback callback, void* context) {
    if (host == nullptr || urlPath == nullptr || buffer == nullptr) return -1;
    return Contained(-1, [&] {
        WebConnection connection(host, true, false);
        connection.progressCallback = callback;
        connection.callbackContext = context;
        return ReadWebFileRange(connection, urlPath, offset, length, buffer);
    });
}
