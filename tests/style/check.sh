#!/usr/bin/env bash
# Style that a machine can check: format, includes that respect the floors, words that have no place.
set -uo pipefail
cd "$(dirname "$0")/../.."

status=0
sources=$(find src tests bench -name '*.cpp' -o -name '*.h')
headers=$(find src tests bench -name '*.h')

# complain RULE PLACES: a rule that is broken, and where; nothing when PLACES is empty.
complain() {
    [ -n "$2" ] || return 0
    printf '%s:\n%s\n' "$1" "$2"
    status=1
}

if ! clang-format --dry-run --Werror $sources; then
    echo "clang-format: run clang-format -i on the files above"
    status=1
fi
marks='TO''DO|FIX''ME|XX''X|HACK'
complain "marks of unfinished work" "$(grep -nE "\b($marks)\b" $sources)"
complain "headers without #pragma once" "$(grep -L '^#pragma once' $headers)"
complain "tabulators" "$(grep -nP '\t' $sources)"
# State lives in the struct of its module, where a test can put it back.
complain "state hidden in a function" \
    "$(grep -nE '^ +static [^()]*( =|;)' $(find src -name '*.cpp') | grep -v 'static constexpr')"
# The machine and its libraries end at the platform; the support tool and its builder of installations
# read YAML and start programs.
complain "headers of the machine above the platform" \
    "$(grep -nE '#include <(hpdf|sqlite3|libpq|yaml-cpp|Q[A-Z]|unistd|sys/|fcntl|windows)' \
        $(find src -path src/platform -prune -o -path src/nzutil -prune -o \
            -path src/installation -prune -o -type f -print))"
python3 tests/style/floors.py || status=1
python3 tests/style/trace.py || status=1
python3 tests/style/fields.py || status=1
exit $status
