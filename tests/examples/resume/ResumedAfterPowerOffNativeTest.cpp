/* Downloads that go on after the power has failed at any of their calls that change storage. */
#include "examples/resume/ResumeFixture.h"

#include <map>

namespace {

const std::vector<std::string> changes = {"CreateFileW", "WriteFile", "FlushFileBuffers", "DeleteFileW",
                                          "MoveFileW"};

class PowerOff : public Resume {
protected:
    /* The names of the calls that change storage, in the order of a download without failures. */
    std::vector<std::string> CallsOfOneDownload() {
        device.ForgetCalls();
        EXPECT_EQ(resumeDone, Run());
        std::vector<std::string> names;
        for (const std::string& line :
             device.Calls({"CreateFileW", "WriteFile", "FlushFileBuffers", "DeleteFileW", "MoveFileW"})) {
            const std::string name = line.substr(0, line.find('('));
            const size_t times = line.ends_with(" times)") ? std::stoul(line.substr(line.rfind('(') + 1)) : 1;
            names.insert(names.end(), times, name);
        }
        device.PutFile(file, "older");
        return names;
    }

    /* From the n-th of these calls on, nothing changes storage any more. */
    void FailPowerAt(size_t n, const std::vector<std::string>& calls) {
        std::map<std::string, size_t> made;
        for (size_t i = 0; i < n; ++i)
            ++made[calls[i]];
        for (const std::string& name : changes)
            device.FailCall(name, made[name] + 1, ERROR_GEN_FAILURE, Failing::FromThereOn);
    }
};

}  // namespace

TEST_F(PowerOff, AtAnyCallIsMadeGoodByTheNextDownload) {
    const std::vector<std::string> calls = CallsOfOneDownload();
    ASSERT_LT(20u, calls.size());
    for (size_t n = 0; n < calls.size(); ++n) {
        SCOPED_TRACE(n);
        device.PutFile(file, "older");
        device.ForgetCalls();
        FailPowerAt(n, calls);
        Run();
        device.StopFailing();
        // Either the old file, or the new one, or for a moment none; never a part of one.
        const std::optional<std::string> there = device.TakeFile(file);
        EXPECT_TRUE(!there || there == "older" || there == content);
        EXPECT_EQ(resumeDone, Run());
        ExpectWhole();
    }
}

TEST_F(PowerOff, FindsEachPieceOnTheDisk) {
    const std::vector<std::string> calls = CallsOfOneDownload();
    size_t writes = 0;
    for (size_t i = 0; i < calls.size(); ++i) {
        if (calls[i] != "WriteFile") continue;
        ++writes;
        EXPECT_EQ("FlushFileBuffers", calls.at(i + 1));
    }
    EXPECT_EQ(6u, writes) << "the description, and five pieces";
}

TEST_F(PowerOff, WhatWasNotFlushedMayBeLost) {
    const std::vector<std::string> calls = CallsOfOneDownload();
    for (size_t n = 0; n < calls.size(); ++n) {
        if (calls[n] != "FlushFileBuffers") continue;
        SCOPED_TRACE(n);
        device.PutFile(file, "older");
        FailPowerAt(n, calls);
        Run();
        device.StopFailing();
        // The file has its length, but the bytes written last never reached the disk.
        std::string torn = device.TakeFile(part).value_or("");
        const size_t lost = torn.size() - torn.size() % pieceSize;
        const size_t begin = lost == torn.size() && lost > 0 ? lost - pieceSize : lost;
        torn.replace(begin, torn.size() - begin, torn.size() - begin, '\0');
        device.PutFile(part, torn);
        EXPECT_EQ(resumeDone, Run());
        ExpectWhole();
    }
}

TEST_F(PowerOff, BetweenDeletingTheOlderFileAndTheMoveLeavesTheWholePart) {
    device.FailCall("MoveFileW", 1, ERROR_GEN_FAILURE);
    EXPECT_EQ(resumeNotWritten, Run());
    EXPECT_FALSE(device.Exists(file));
    EXPECT_TRUE(content == device.TakeFile(part));
    EXPECT_EQ(resumeDone, Run());
    EXPECT_EQ(LMInt64{3 * pieceSize}, takenOver);
    ExpectWhole();
}
