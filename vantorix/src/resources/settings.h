#ifndef VANTORIX_RESOURCES_SETTINGS_H
#define VANTORIX_RESOURCES_SETTINGS_H

namespace vantorix {

// The user's choices kept in "settings.xml"; the control bindings live in the player evaluators.
struct Settings {
    int xRes = 800;
    int yRes = 600;
    bool fullscreen = false;
    int volumeSfx = 70;     // percent
    int volumeMusic = 100;  // percent
};

const char* const XML_SETTINGS_CONTROLS = "controls";
const char* const XML_SETTINGS_NAME = "name";
const char* const XML_SETTINGS_CONTROLS_SINGLE = "single";
const char* const XML_SETTINGS_CONTROLS_MULTI_1 = "multi 1";
const char* const XML_SETTINGS_CONTROLS_MULTI_2 = "multi 2";
const char* const XML_SETTINGS_SCREEN = "screen";
const char* const XML_SETTINGS_FULLSCREEN = "fullscreen";
const char* const XML_SETTINGS_XRES = "xRes";
const char* const XML_SETTINGS_YRES = "yRes";
const char* const XML_SETTINGS_SOUND = "sound";
const char* const XML_SETTINGS_VOLUME_SFX = "volumeSfx";
const char* const XML_SETTINGS_VOLUME_MUSIC = "volumeMusic";

}  // namespace vantorix

#endif
