#include "buildinfo.h"

namespace vantorix {

const char* const VERSION_MAIN = "1";
const char* const VERSION_SUB = "0";

std::string getBuildDate() { return __DATE__; }
std::string getBuildTime() { return __TIME__; }
std::string getVersion() { return std::string(VERSION_MAIN) + "." + VERSION_SUB; }
std::string getFullVersion() { return getVersion() + " (" + getBuildDate() + ", " + getBuildTime() + ")"; }

}  // namespace vantorix
