/* Searches through the exports. */
#include "Flow.h"
#include "LMOnline.h"
#include "support/MapShopReply.h"

namespace {

constexpr int32_t lastNumber = 24;

class Search : public Flow {
public:
    explicit Search(int mapCount, int32_t serviceStatus = 0)
        : maps(mapCount), status(serviceStatus), results(static_cast<size_t>(mapCount) + 1) {}

    void SetUp() override {
        MapShopReply reply;
        reply.Int32(status).Int32(maps);
        for (int i = 0; i < maps; ++i)
            reply.Map(Name(i), i, TEXT("/maps/of some length.map"),
                      TEXT("A text that needs memory of its own."));
        device.AddHost(u"online.orvande.example", 80, WebReply::WithBody(reply.Int32(lastNumber).bytes));
    }

    void Run() override {
        static constexpr char item[17] = "0123456789abcdef";
        search = LMMapShopSearch(item, 1);
        error = GetLastError();
        for (count = 0; count < results.size() && LMMapShopGetNext(search, &results[count]) != 0;)
            ++count;
    }

    std::string Outcome() override {
        if (search == nullptr) return "no search, error " + ErrorText(error);
        for (size_t i = 0; i < count; ++i) {
            if (results[i].text1 != Name(static_cast<int>(i))) return "a map that was not sent";
        }
        const int32_t last = LMMapShopClose(std::exchange(search, nullptr));
        return std::to_string(count) + " maps, number " + std::to_string(last) + ", error " +
               ErrorText(error);
    }

    void CleanUp() override { LMMapShopClose(std::exchange(search, nullptr)); }

private:
    static WideString Name(int i) { return WideString(TEXT("A map with a longer name ")) + WCHAR(u'a' + i); }

    const int maps;
    const int32_t status;
    std::vector<MapShopResult> results;
    MapShopSearch* search = nullptr;
    size_t count = 0;
    DWORD error = 0;
};

}  // namespace

std::vector<FlowRow> SearchRows() {
    const std::string_view nothing = "0 maps, number 0, error E";
    std::vector<Statement> statements = {
        {"InternetOpenW", {nothing}},
        {"InternetConnectW", {nothing}},
        {"HttpOpenRequestW", {nothing}},
        {"HttpSendRequestW", {nothing}},
        // The results that had come whole; the number is the answer's last, which did not come.
        {"InternetReadFile", {nothing}},
        // There is no search when there is no memory for one; else it has what had come whole.
        {"memory 1", {"no search, error 8"}},
        {"memory", {"0 maps, number 0, error 8"}},
    };
    std::vector<FlowRow> rows;
    rows.push_back(
        {"SearchWithoutResults", Library::Online, Make<Search>(0), "0 maps, number 24, error 0", statements});
    rows.push_back({"RefusedSearch", Library::Online, Make<Search>(1, int32_t{7}),
                    "0 maps, number 0, error 0x22000007", statements});
    rows.push_back(
        {"SearchWithOneResult", Library::Online, Make<Search>(1), "1 maps, number 24, error 0", statements});
    statements.back().outcomes = {"0 maps, number 0, error 8", "1 maps, number 0, error 8",
                                  "2 maps, number 0, error 8", "3 maps, number 0, error 8",
                                  "4 maps, number 0, error 8", "5 maps, number 0, error 8"};
    // Behind a read that fails the reply goes on, without the bytes that were lost: its last number is what
    // then ends it.
    statements.push_back({"InternetReadFile 2", {"1 maps, number *, error E"}});
    statements.push_back({"InternetReadFile 3", {"2 maps, number *, error E"}});
    statements.push_back({"InternetReadFile 4", {"3 maps, number *, error E"}});
    statements[4].outcomes = {nothing, "4 maps, number 0, error E"};
    rows.push_back({"SearchWithFiveResults", Library::Online, Make<Search>(5), "5 maps, number 24, error 0",
                    statements});
    return rows;
}
