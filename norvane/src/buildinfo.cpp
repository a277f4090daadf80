#include "buildinfo.h"

namespace norvane {

namespace {
const int VERSION_MAIN = 1;
const int VERSION_SUB = 0;
}  // namespace

std::string getBuildDate() { return __DATE__; }
std::string getBuildTime() { return __TIME__; }
std::string getVersion() { return std::to_string(VERSION_MAIN) + "." + std::to_string(VERSION_SUB); }
std::string getFullVersion() { return getVersion() + " (" + getBuildDate() + ", " + getBuildTime() + ")"; }

}  // namespace norvane
