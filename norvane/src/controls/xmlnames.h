#ifndef NORVANE_CONTROLS_XMLNAMES_H
#define NORVANE_CONTROLS_XMLNAMES_H

// Element and attribute names of input definitions and stored bindings; only controls/ includes this.
namespace norvane {

const char* const XML_INPUTEVALUATOR = "inputEvaluator";
const char* const XML_TRIGGER = "trigger";
const char* const XML_AXIS = "axis";
const char* const XML_CODE = "code";
const char* const XML_NAME = "name";
const char* const XML_DESCRIPTION = "description";
const char* const XML_MAX = "max";
const char* const XML_MIN = "min";
const char* const XML_QUEUE = "queue";
const char* const XML_DATA = "data";
const char* const XML_DATASTRING = "dataString";
const char* const XML_DEFAULTKEYSTATE = "defaultKeyState";
const char* const XML_DIRECTION = "direction";
const char* const XML_KEY = "key";
const char* const XML_BUTTON = "button";
const char* const XML_JOY = "joy";
const char* const XML_VALUE = "value";
const char* const XML_STATE = "state";
const char* const XML_KEYTRANSLATOR = "keyTranslator";
const char* const XML_JOYBUTTONTRANSLATOR = "joyButtonTranslator";
const char* const XML_JOYAXISTRANSLATOR = "joyAxisTranslator";
const char* const XML_MOUSEBUTTONTRANSLATOR = "mouseButtonTranslator";
const char* const XML_MOUSEAXISTRANSLATOR = "mouseAxisTranslator";

}  // namespace norvane

#endif
