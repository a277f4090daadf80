#include "resources/settings.h"

#include <memory>

#include "controls/inputevaluator.h"
#include "debug/log.h"
#include "resources/resources.h"
#include "vantorix.h"
#include "xml/xml.h"

namespace vantorix {

using norvane::xml::Node;

namespace {

// A window outside these bounds could not open, and the failed start-up would save it again.
const long MIN_RESOLUTION = 200;
const long MAX_RESOLUTION = 16384;

// Keeps `field` when the attribute is missing or outside [min, max].
void readInt(const Node* node, const char* attribute, long min, long max, int& field) {
    const long value = node->getAttributeLong(attribute, field);
    if (value < min || value > max) {
        norvane::debug::warning(dbgVantorixResources, "Settings: %s %ld is not from %ld to %ld, keeping %d.",
                                attribute, value, min, max, field);
        return;
    }
    field = static_cast<int>(value);
}

Node* element(const char* name) {
    Node* node = new Node;
    node->name = name;
    return node;
}

}  // namespace

void Resources::loadSettings() {
    std::unique_ptr<Node> root;
    try {
        const std::string path = dirManager.getSubDir(norvane::sdUser, "", false) + FILE_SETTINGS;
        norvane::debug::debug(dbgVantorixResources, "Loading settings from file \"%s\".", path.c_str());
        root.reset(norvane::xml::loadXML(path.c_str()));
    } catch (const std::string& text) {
        norvane::debug::warning(dbgVantorixResources, "Could not load settings: %s", text.c_str());
        return;
    }
    if (!root) return;
    for (const Node* child : root->children) {
        if (child->name == XML_SETTINGS_CONTROLS) {
            const std::string group = child->getAttribute(XML_SETTINGS_NAME, std::string());
            if (group == XML_SETTINGS_CONTROLS_SINGLE) {
                evaluatorGamePlayerSingle->getTranslatorsFromNode(child);
            } else if (group == XML_SETTINGS_CONTROLS_MULTI_1) {
                evaluatorGamePlayerMulti[0]->getTranslatorsFromNode(child);
            } else if (group == XML_SETTINGS_CONTROLS_MULTI_2) {
                evaluatorGamePlayerMulti[1]->getTranslatorsFromNode(child);
            } else {
                norvane::debug::warning(dbgVantorixResources, "Unknown control group \"%s\".", group.c_str());
            }
        } else if (child->name == XML_SETTINGS_SCREEN) {
            settings.fullscreen = child->getAttributeBool(XML_SETTINGS_FULLSCREEN, settings.fullscreen);
            readInt(child, XML_SETTINGS_XRES, MIN_RESOLUTION, MAX_RESOLUTION, settings.xRes);
            readInt(child, XML_SETTINGS_YRES, MIN_RESOLUTION, MAX_RESOLUTION, settings.yRes);
        } else if (child->name == XML_SETTINGS_SOUND) {
            readInt(child, XML_SETTINGS_VOLUME_SFX, 0, 100, settings.volumeSfx);
            readInt(child, XML_SETTINGS_VOLUME_MUSIC, 0, 100, settings.volumeMusic);
        }
    }
}

void Resources::saveSettings() {
    Node root;
    root.name = "settings";
    Node* screen = element(XML_SETTINGS_SCREEN);
    screen->setAttributeBool(XML_SETTINGS_FULLSCREEN, settings.fullscreen);
    screen->setAttributeLong(XML_SETTINGS_XRES, settings.xRes);
    screen->setAttributeLong(XML_SETTINGS_YRES, settings.yRes);
    root += screen;
    Node* sound = element(XML_SETTINGS_SOUND);
    sound->setAttributeLong(XML_SETTINGS_VOLUME_SFX, settings.volumeSfx);
    sound->setAttributeLong(XML_SETTINGS_VOLUME_MUSIC, settings.volumeMusic);
    root += sound;
    const std::pair<const char*, const norvane::InputEvaluator*> groups[] = {
        {XML_SETTINGS_CONTROLS_SINGLE, evaluatorGamePlayerSingle},
        {XML_SETTINGS_CONTROLS_MULTI_1, evaluatorGamePlayerMulti[0]},
        {XML_SETTINGS_CONTROLS_MULTI_2, evaluatorGamePlayerMulti[1]},
    };
    for (const auto& group : groups) {
        Node* controls = element(XML_SETTINGS_CONTROLS);
        (*controls)[XML_SETTINGS_NAME] = group.first;
        group.second->addTranslatorsToTree(controls);
        root += controls;
    }
    const std::string path = dirManager.getSubDir(norvane::sdUser, "", true) + FILE_SETTINGS;
    norvane::debug::debug(dbgVantorixResources, "Saving settings to file \"%s\".", path.c_str());
    root.saveXML(path.c_str());
}

}  // namespace vantorix
