// The support tool.

#include "nzutil/commands.h"
#include "platform/standard_streams.h"

int main(int count, char** arguments) {
    platform::open_standard_streams();
    return nzutil::run_tool(nzutil::Arguments(arguments + 1, arguments + count));
}
