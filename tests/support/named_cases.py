"""Runs unittest cases as a program of GoogleTest would, so that each of them is counted: it reports them in
the same form, takes --gtest_list_tests and the environment's GTEST_FILTER. A skipped case has failed: nothing
is known of what it is about."""
import fnmatch
import os
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

    def addSubTest(self, test, subtest, error):
        """Also called with each that is well."""
        count = len(self.failures) + len(self.errors)
        super().addSubTest(test, subtest, error)
        if count < len(self.failures) + len(self.errors):
            print((self.failures if issubclass(error[0], test.failureException) else self.errors)[-1][1])
            self.report(" FAILED ", test)

    def addSkip(self, test, reason):
        super().addSkip(test, reason)
        print(f"skipped: {reason}")
        self.report(" FAILED ", test)

    def report(self, word, test):
        print(f"[ {word} ] {name_of(test)} ({int(1000 * (time.monotonic() - self.began))} ms)", flush=True)


def name_of(test):
    return test.id().replace("__main__.", "").replace(".test_", ".")


def matches(name, patterns):
    """`patterns`: GoogleTest's filter, with what is wanted before a minus and what is not behind it."""
    wanted, _, unwanted = patterns.partition("-")
    return (any(fnmatch.fnmatchcase(name, pattern) for pattern in (wanted or "*").split(":"))
            and not any(fnmatch.fnmatchcase(name, pattern) for pattern in unwanted.split(":")))


def chosen(suite):
    """The cases of a suite, however deep they lie, that GTEST_FILTER matches."""
    for test in suite:
        if isinstance(test, unittest.TestSuite):
            yield from chosen(test)
        elif matches(name_of(test), os.environ.get("GTEST_FILTER", "*")):
            yield test


def succeeded(result):
    some_ran = result.testsRun > 0 or "GTEST_FILTER" in os.environ
    return result.wasSuccessful() and some_ran and not result.skipped


def main():
    cases = unittest.defaultTestLoader.loadTestsFromModule(sys.modules["__main__"])
    suite = unittest.TestSuite(chosen(cases))
    if "--gtest_list_tests" in sys.argv:
        print(*(f"  {name_of(test)}" for test in suite), sep="\n")
        return
    print(f"[==========] Running {suite.countTestCases()} tests from {sys.argv[0]}", flush=True)
    result = Result()
    suite.run(result)
    sys.exit(0 if succeeded(result) else 1)
