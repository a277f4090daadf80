#ifndef NORVANE_BUILDINFO_H
#define NORVANE_BUILDINFO_H

#include <string>

namespace norvane {

std::string getBuildDate();  // "Mar  5 2024", fixed when this file is compiled
std::string getBuildTime();  // "14:03:09"
std::string getVersion();
std::string getFullVersion();

}  // namespace norvane

#endif
