#include "context/environment.h"

namespace MXLIBRERIA {

Environment environment;

std::string archive_path(const std::string& name) {
    return environment.archive_directory + name;
}

}  // namespace MXLIBRERIA
