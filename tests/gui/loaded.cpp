#include "gui/loaded.h"

#include <fstream>

#include "controls/trigger.h"
#include "files/sysdirs.h"
#include "screen.h"

namespace loaded {

using namespace norvane;

void LoadedGui::TearDown() {
    for (auto& bank : manager.banks) delete bank.second;  // the manager leaves them alive
}

gui::GUI* LoadedGui::load(const std::string& guiContent) {
    // The scratch directory is shared by every test folder, and tests run in parallel.
    mkdirs(TEST_TMP_DIR "/gui/");
    const std::string path = std::string(TEST_TMP_DIR "/gui/") +
                             ::testing::UnitTest::GetInstance()->current_test_info()->test_suite_name() + "." +
                             ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".xml";
    std::ofstream out(path);
    out << "<resources><inputEvaluator name=\"menu\">";
    for (int code = 1; code <= 9; ++code) {
        out << "<trigger code=\"" << code << "\" name=\"t" << code << "\" data=\"" << 100 + code << "\"/>";
    }
    out << "</inputEvaluator><gui name=\"gui\" width=\"640\" height=\"480\" visible=\"true\">" << guiContent
        << "</gui></resources>";
    out.close();
    testing::internal::CaptureStdout();
    manager.load(path, "");
    log = testing::internal::GetCapturedStdout();
    gui = dynamic_cast<gui::GUI*>(manager.banks["gui"]);
    if (!gui) return nullptr;
    gui->setActive(true);
    gui->setCallback(&callback);
    vpScreen = {0, 0, 640, 480};
    q.push(gui);
    return gui;
}

std::vector<int> LoadedGui::fired() {
    std::vector<int> codes;
    for (Trigger* t : probe::drain(q)) {
        EXPECT_EQ(t->data, 100 + t->code) << t->name;
        codes.push_back(t->code);
    }
    return codes;
}

void LoadedGui::key(SDLKey sym, Uint16 unicode) {
    send(probe::keyEvent(SDL_KEYDOWN, sym, unicode));
    send(probe::keyEvent(SDL_KEYUP, sym, 0));
}

}  // namespace loaded
