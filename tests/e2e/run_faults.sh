#!/bin/sh
# Runs the fault tests: the built program against misbehaving servers and
# hostile pages on port 80 inside a private network namespace.
# Usage: run_faults.sh PROGRAM
exec sh "$(dirname "$0")/run_e2e.sh" "$1" check_faults.py
