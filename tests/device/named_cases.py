"""Runs unittest cases and reports them in GoogleTest's form, so that each of them is counted. A skipped one
has failed: nothing is known of what it is about."""
import sys
import time
import unittest


class Result(unittest.TestResult):
    began = 0

    def startTest(self, test):
        super().startTest(test)
        self.began = time.monotonic()
        print(f"[ RUN      ] {name_of(test)}", flush=True)

    def addSuccess(self, test):
        self.report("      OK", test)

    def addFailure(self, test, error):
        super().addFailure(test, error)
        print(self.failures[-1][1])
        self.report(" FAILED ", test)

    def addError(self, test, error):
        """Also for what is no test: a class whose setUpClass failed."""
        super().addError(test, error)
        if not isinstance(test, unittest.TestCase):
            self.began = time.monotonic()
        print(self.errors[-1][1])
        self.report(" FAILED ", test)

    def addSkip(self, test, reason):
        super().addSkip(test, reason)
        print(f"skipped: {reason}")
        self.report(" FAILED ", test)

    def report(self, word, test):
        print(f"[ {word} ] {name_of(test)} ({int(1000 * (time.monotonic() - self.began))} ms)", flush=True)


def name_of(test):
    return test.id().replace("__main__.", "").replace(".test_", ".")


def succeeded(result):
    return result.wasSuccessful() and result.testsRun > 0 and not result.skipped


def main():
    suite = unittest.defaultTestLoader.loadTestsFromModule(sys.modules["__main__"])
    print(f"[==========] Running {suite.countTestCases()} tests from {sys.argv[0]}", flush=True)
    result = Result()
    suite.run(result)
    sys.exit(0 if succeeded(result) else 1)
