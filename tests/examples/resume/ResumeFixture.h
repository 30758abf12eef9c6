/* Downloads that go on, from a scripted host of the simulated handheld. */
#pragma once

#include "support/NetworkTest.h"

#include <string>

#include "resume/ResumedDownload.h"

class Resume : public NetworkTest {
protected:
    static constexpr size_t pieceSize = 65536;
    static constexpr size_t size = 4 * pieceSize + 100;
    static constexpr WCHAR host[] = u"maps.example";
    static constexpr WCHAR file[] = u"\\Temp\\a.map";
    static constexpr WCHAR part[] = u"\\Temp\\a.map.part";
    static constexpr WCHAR description[] = u"\\Temp\\a.map.part.txt";

    void SetUp() override;

    /* Bytes that repeat nowhere near; other ones for each `version`. */
    static std::string Content(size_t count, unsigned version = 1);

    /* Downloads what the host has. The library has been used from a new start of the program. */
    ResumeResult Run(LMProgressCallback callback = nullptr, void* context = nullptr);

    /* Expects that FILE is what the host has, and that nothing else is left. */
    void ExpectWhole();

    /* Expects the older file as it was. */
    void ExpectOlder() const { EXPECT_EQ("older", device.TakeFile(file)); }

    /* Lets a download break off after so many pieces. */
    void BreakOffAfter(size_t pieces);

    [[nodiscard]] size_t PartSize() const { return device.TakeFile(part).value_or("").size(); }

    std::string content = Content(size);  // what the host has
    bool knowsRanges = true;
    bool announcesLength = true;
    size_t requestsUntilSilence = SIZE_MAX;  // then the host cannot be reached
    LMInt64 takenOver = 0;                   // of the last run
    DWORD error = 0;

private:
    WebReply Answer(const WebRequest& request);
};
