#ifndef TESTS_SUPPORT_GAMEDATA_H
#define TESTS_SUPPORT_GAMEDATA_H

#include <dirent.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <memory>
#include <string>

#include "files/sysdirs.h"
#include "resources/resources.h"
#include "xml/xml.h"

// The bank element named `name` (by its "name" attribute) of a resource definition.
inline norvane::xml::Node* bankElement(norvane::xml::Node* root, const std::string& name) {
    for (norvane::xml::Node* child : root->children) {
        if (child->getAttribute("name", std::string()) == name) return child;
    }
    return nullptr;
}

// Installs the shipped data as the data directory of the build's throwaway tree, with
// "resources.xml" rewritten by `edit`. The definition is written, never linked: tests write
// their own variants of it there.
inline void installData(const std::function<void(norvane::xml::Node* root)>& edit = nullptr) {
    const std::string shipped = std::string(SOURCE_DIR) + "/data/";
    const std::string dir = vantorix::dirManager.getSubDir(norvane::sdData, "", true);
    std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(shipped.c_str()), closedir);
    ASSERT_TRUE(entries);
    while (const dirent* entry = readdir(entries.get())) {
        const std::string name = entry->d_name;
        if (name == "." || name == ".." || name == "resources.xml") continue;
        ASSERT_TRUE(symlink((shipped + name).c_str(), (dir + name).c_str()) == 0 || errno == EEXIST) << name;
    }
    std::unique_ptr<norvane::xml::Node> root(norvane::xml::loadXML((shipped + "resources.xml").c_str()));
    if (edit) edit(root.get());
    root->saveXML((dir + "resources.xml").c_str());
}

#endif
