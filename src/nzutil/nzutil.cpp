// The support tool.

#include "nzutil/commands.h"

int main(int count, char** arguments) {
    return nzutil::run_tool(nzutil::Arguments(arguments + 1, arguments + count));
}
