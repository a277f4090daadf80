#include "gamedata.h"

#include <dirent.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <memory>

#include "controls/queue.h"
#include "files/sysdirs.h"
#include "norvane.h"

using norvane::xml::Node;

namespace {

void startClean() {
    if (std::string(NORVANE_FS_ROOT).empty()) GTEST_SKIP() << "needs a build with NORVANE_FS_ROOT";
    std::remove(settingsPath().c_str());
}

// A finished test's evaluators and image loader must not reach the next one.
void forgetGame() {
    norvane::queue.evaluators.clear();
    norvane::queue.focusLostTrigger = nullptr;
    norvane::cleanUp();
}

}  // namespace

void GameData::SetUp() {
    captured([] { norvane::init(0, false); });
    startClean();
}

void GameData::TearDown() { forgetGame(); }

void GameWindow::SetUp() {
    WindowTest::SetUp();
    startClean();
}

void GameWindow::TearDown() { forgetGame(); }

Node* bankElement(Node* root, const std::string& name) {
    for (Node* child : root->children) {
        if (child->getAttribute("name", std::string()) == name) return child;
    }
    return nullptr;
}

void installData(const std::function<void(Node* root)>& edit) {
    const std::string shipped = std::string(SOURCE_DIR) + "/data/";
    const std::string dir = vantorix::dirManager.getSubDir(norvane::sdData, "", true);
    std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(shipped.c_str()), closedir);
    ASSERT_TRUE(entries);
    while (const dirent* entry = readdir(entries.get())) {
        const std::string name = entry->d_name;
        if (name == "." || name == ".." || name == "resources.xml") continue;
        ASSERT_TRUE(symlink((shipped + name).c_str(), (dir + name).c_str()) == 0 || errno == EEXIST) << name;
    }
    std::unique_ptr<Node> root(norvane::xml::loadXML((shipped + "resources.xml").c_str()));
    if (edit) edit(root.get());
    root->saveXML((dir + "resources.xml").c_str());
}

std::string settingsPath() {
    return vantorix::dirManager.getSubDir(norvane::sdUser, "", true) + vantorix::FILE_SETTINGS;
}

void writeSettings(const std::string& content) { std::ofstream(settingsPath(), std::ios::binary) << content; }
