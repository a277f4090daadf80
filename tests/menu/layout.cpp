#include "menu/layout.h"

#include <gtest/gtest.h>

#include "gui/root.h"
#include "xml/xml.h"

namespace {

const float WINDOW_W = 800, WINDOW_H = 600;
const float LOGO_H = 144;  // the logo stands 10 pixels below the top; the menu panels below it

}  // namespace

Layout::Layout() {
    // Only the GUI and the evaluator its widgets name: nothing that needs a GL context.
    std::unique_ptr<norvane::xml::Node> root(norvane::xml::loadXML(SOURCE_DIR "/data/resources.xml"));
    norvane::xml::Node definition;
    definition.name = "resources";
    for (norvane::xml::Node* bank : root->children) {
        if (bank->name == "gui" || bank->getAttribute("name", std::string()) == "evaluatorGui") {
            definition.children.push_back(bank);
        }
    }
    testing::internal::CaptureStdout();
    manager.getFromNode(&definition, SOURCE_DIR "/data/");
    testing::internal::GetCapturedStdout();
    definition.children.clear();  // still the document's
    gui = dynamic_cast<norvane::gui::GUI*>(manager.banks["gui"]);
    for (const char* name : {"pMainMenu", "pSettings", "pCredits", "pSoundSettings", "pQuit"}) {
        (*gui)[name]->center({WINDOW_W, WINDOW_H - LOGO_H - 10});
    }
    for (const char* name : {"pControls", "pGetKey", "pEnterName", "pInGame"}) (*gui)[name]->center({WINDOW_W, WINDOW_H});
}

Layout::~Layout() {
    for (auto& bank : manager.banks) delete bank.second;  // the manager would leave them alive
}

norvane::basic_Rect<float> Layout::rect(const std::string& name) const {
    const norvane::gui::Component* c = (*gui)[name];
    EXPECT_NE(c, nullptr) << name;
    return c ? absoluteRect(c) : norvane::basic_Rect<float>{};
}

norvane::basic_Rect<float> absoluteRect(const norvane::gui::Component* component) {
    norvane::basic_Rect<float> r{0, 0, component->getDimensions().x, component->getDimensions().y};
    for (const norvane::gui::Component* c = component; c && c->getParent(); c = c->getParent()) {
        r.x += c->getPos().x;
        r.y += c->getPos().y;
    }
    return r;
}
