"""Python runs this when it starts with this folder in PYTHONPATH: what a script runs is counted where
somebody wants to know."""
import os

if "COVERAGE_PROCESS_START" in os.environ:
    import coverage
    coverage.process_startup()
