#ifndef VANTORIX_BUILDINFO_H
#define VANTORIX_BUILDINFO_H

#include <string>

namespace vantorix {

extern const char* const VERSION_MAIN;
extern const char* const VERSION_SUB;

std::string getBuildDate();  // "Mar  5 2024", fixed when this file is compiled
std::string getBuildTime();  // "14:03:09"
std::string getVersion();
std::string getFullVersion();

}  // namespace vantorix

#endif
