/* The service's program, run by a test. */
#pragma once

#include <signal.h>
#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "TemporaryFolder.h"

class ServiceProcess {
public:
    /* Starts the program. What is not ended by the test is killed with the object. */
    explicit ServiceProcess(const std::vector<std::string>& arguments);
    ServiceProcess(const ServiceProcess&) = delete;
    ServiceProcess& operator=(const ServiceProcess&) = delete;
    ~ServiceProcess();

    /* Waits until the service says that it listens, and gives its port; 0, and a failure of the test, when it
     * ends without. */
    int WaitForPort();

    /* Sends a signal. */
    void Signal(int signal) const;

    /* Waits for its end and gives the exit code; -1 when a signal ended it. */
    int WaitForEnd();

    /* Asks it to end, as a system does, and waits. */
    int End() {
        Signal(SIGTERM);
        return WaitForEnd();
    }

    /* The most memory that it has held so far, in bytes. */
    [[nodiscard]] uint64_t PeakMemory() const;

    /* What it has written; whole after its end. */
    [[nodiscard]] const std::string& Output() const { return output; }
    [[nodiscard]] std::string Errors() const;

private:
    /* Takes in more of the output; false at its end. */
    bool ReadOutput();

    TemporaryFolder folder;
    pid_t process = -1;
    int outputPipe = -1;
    std::string output;
};
