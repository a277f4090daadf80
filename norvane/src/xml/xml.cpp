#include "xml/xml.h"

#include <expat.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>

#include "debug/log.h"
#include "files/atomicfile.h"
#include "tools/convert.h"

namespace norvane {
namespace xml {

namespace {
const int BUFFERSIZE = 1023;
// A hostile definition must not make a bank generate entries for ever; nested loops multiply
// their passes, so the bound holds for the product. The game's longest loop has 32 passes.
const long MAX_LOOP_PASSES = 10000;
// Wider padding is never meant and would only cost memory.
const long MAX_LOOP_DIGITS = 64;
const char* const XML_VAR = "var";
const char* const XML_FROM = "from";
const char* const XML_TO = "to";
const char* const XML_STEP = "step";
const char* const XML_DIGITS = "digits";
// Expat hands out UTF-8; Node says why the text is kept as ISO-8859-1.
std::string toLatin1(const std::string& utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size();) {
        const unsigned char lead = static_cast<unsigned char>(utf8[i]);
        int length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        unsigned int code = lead < 0x80 ? lead : lead >= 0xF0 ? lead & 0x07u : lead >= 0xE0 ? lead & 0x0Fu : lead & 0x1Fu;
        for (int k = 1; k < length && i + static_cast<size_t>(k) < utf8.size(); ++k) {
            code = (code << 6) | (static_cast<unsigned char>(utf8[i + static_cast<size_t>(k)]) & 0x3Fu);
        }
        out += code <= 0xFF ? static_cast<char>(code) : '?';
        i += static_cast<size_t>(length);
    }
    return out;
}

}  // namespace

Node::Node(const char* name, const char** atts) : name(name ? name : "") {
    for (int i = 0; atts && atts[i] && atts[i + 1]; i += 2) attributes[atts[i]] = atts[i + 1];
}

Node::~Node() {
    if (parent) parent->children.remove(this);
    while (!children.empty()) {
        Node* child = children.front();
        children.pop_front();
        child->parent = nullptr;
        delete child;
    }
}

Node& Node::operator+=(Node* child) {
    if (child->parent) *child->parent -= child;
    children.push_back(child);
    child->parent = this;
    return *this;
}

Node& Node::operator-=(Node* child) {
    children.remove(child);
    child->parent = nullptr;
    return *this;
}

std::string& Node::operator[](std::string attributeName) { return attributes[attributeName]; }

const std::string* Node::getAttribute(std::string attributeName) const {
    auto it = attributes.find(attributeName);
    return it == attributes.end() ? nullptr : &it->second;
}

std::string Node::getAttribute(std::string attributeName, std::string def) const {
    const std::string* value = getAttribute(attributeName);
    return value ? *value : def;
}

long Node::getAttributeLong(std::string attributeName, long def) const {
    const std::string* value = getAttribute(attributeName);
    return value ? std::strtol(value->c_str(), nullptr, 0) : def;
}

float Node::getAttributeFloat(std::string attributeName, float def) const {
    const std::string* value = getAttribute(attributeName);
    return value ? std::strtof(value->c_str(), nullptr) : def;
}

bool Node::getAttributeBool(std::string attributeName, bool def) const {
    const std::string* value = getAttribute(attributeName);
    if (!value) return def;
    return *value == "1" || *value == "t" || *value == "true";
}

void Node::setAttributeLong(std::string attributeName, long value) {
    attributes[attributeName] = toStr(value);
}

void Node::setAttributeFloat(std::string attributeName, float value) {
    attributes[attributeName] = toStr(value);
}

void Node::setAttributeBool(std::string attributeName, bool value) {
    attributes[attributeName] = value ? "true" : "false";
}

std::string Node::toString(int indent) const {
    std::string out;
    write(out, indent);
    return out;
}

// Appends to one string: returning each subtree's text would copy it again at every level above.
void Node::write(std::string& out, int indent) const {
    const size_t pad = static_cast<size_t>(std::max(indent, 0));
    out.append(pad, ' ').append("<").append(name);
    for (const auto& attribute : attributes) {
        out.append(" ").append(attribute.first).append("=\"").append(encode(attribute.second)).append("\"");
    }
    if (children.empty()) {
        out.append("/>\n");
        return;
    }
    out.append(">\n");
    for (const Node* child : children) child->write(out, indent + 2);
    out.append(pad, ' ').append("</").append(name).append(">\n");
}

void Node::saveXML(const char* filename) const {
    AtomicFile out(filename);
    if (!out.get()) return;
    const std::string text = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n" + toString(0);
    if (std::fwrite(text.data(), 1, text.size(), out.get()) == text.size()) out.commit();
}

void XMLHandler::startElement(const char*, const char**) {}
void XMLHandler::endElement(const char*) {}

void DOMXMLHandler::startElement(const char* name, const char** atts) {
    if (++depth > MAX_XML_DEPTH) {
        tooDeep = true;
        return;
    }
    Node* node = new Node(name, atts);
    node->name = toLatin1(node->name);
    for (auto& attribute : node->attributes) attribute.second = toLatin1(attribute.second);
    if (!root) {
        root = node;
    } else {
        *current += node;
    }
    current = node;
}

void DOMXMLHandler::endElement(const char*) {
    if (depth-- > MAX_XML_DEPTH) return;
    if (current) current = current->parent;
}

void xmlStart(void* userData, const char* name, const char** atts) {
    static_cast<XMLHandler*>(userData)->startElement(name, atts);
}

void xmlEnd(void* userData, const char* name) { static_cast<XMLHandler*>(userData)->endElement(name); }

void XMLReader::readFile(std::string filename) {
    FILE* file = std::fopen(filename.c_str(), "r");
    if (!file) throw std::string("Could not open XML file \"" + filename + "\"");
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, handler);
    XML_SetElementHandler(parser, xmlStart, xmlEnd);
    char buffer[BUFFERSIZE + 1] = {};
    while (!std::feof(file)) {
        const size_t length = std::fread(buffer, 1, BUFFERSIZE, file);
        if (std::ferror(file)) {
            std::fclose(file);
            XML_ParserFree(parser);
            throw std::string("Error reading XML file");
        }
        if (length == 0) continue;
        buffer[length] = 0;
        const bool isFinal = length < static_cast<size_t>(BUFFERSIZE);
        if (XML_Parse(parser, buffer, static_cast<int>(length), isFinal) == XML_STATUS_ERROR) {
            std::string message = std::string(XML_ErrorString(XML_GetErrorCode(parser))) + " at line " +
                                  toStr(XML_GetCurrentLineNumber(parser));
            std::fclose(file);
            XML_ParserFree(parser);
            throw message;
        }
    }
    std::fclose(file);
    XML_ParserFree(parser);
}

Node* loadXML(const char* filename) {
    DOMXMLHandler handler;
    XMLReader reader(&handler);
    try {
        reader.readFile(filename);
    } catch (const std::string&) {
        delete handler.root;
        throw;
    }
    if (handler.tooDeep) {
        delete handler.root;
        throw std::string("XML file \"") + filename + "\" nests elements deeper than " + toStr(MAX_XML_DEPTH) +
            " levels";
    }
    return handler.root;
}

std::string encode(std::string text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            default: out += c;
        }
    }
    return out;
}

LoopData::LoopData(std::string name, int from, int to, int step, int digits)
    : name(std::move(name)), current(from), to(to), step(step), digits(digits) {}

bool LoopData::advance() {
    // Also ends a range that is not a whole number of steps, after its last value inside.
    if (current == to) return false;
    const long next = static_cast<long>(current) + step;
    if (step > 0 ? next > to : next < to) return false;
    current = static_cast<int>(next);
    return true;
}

std::string LoopData::getString() const { return toStr<int>(current, digits, '0'); }

void readLoop(const Node* node, LoopList& loops, int debugGroup, const std::function<void(const Node*)>& readChildren) {
    // Passes of the loops around this one; readLoop nests through readChildren.
    static long enclosingPasses = 1;
    const std::string* var = node->getAttribute(XML_VAR);
    if (!var) {
        debug::error(debugGroup, "No variable specified for loop. Skipping loop.");
        return;
    }
    const long from = node->getAttributeLong(XML_FROM, 0);
    const long to = node->getAttributeLong(XML_TO, 0);
    const long step = node->getAttributeLong(XML_STEP, 1);
    const long digits = node->getAttributeLong(XML_DIGITS, 0);
    if (step == 0) {
        debug::error(debugGroup, "Step size 0 invalid: %s. Skipping loop.", var->c_str());
        return;
    }
    auto isInt = [](long v) { return v >= INT_MIN && v <= INT_MAX; };
    // A step outside int would be cut to another (even 0) and never reach `to`.
    const bool inRange = isInt(from) && isInt(to) && isInt(step) && (step > 0 ? from < to : from > to);
    const long passes = inRange ? (to - from) / step + 1 : 0;
    if (!inRange || passes > MAX_LOOP_PASSES) {
        debug::error(debugGroup, "Loop range invalid: %s [%ld;%ld] (step: %ld). Skipping loop.", var->c_str(), from,
                     to, step);
        return;
    }
    if (passes > MAX_LOOP_PASSES / enclosingPasses) {
        debug::error(debugGroup, "Loop %s: %ld passes, repeated %ld times by the loops around it, are too many. "
                     "Skipping loop.", var->c_str(), passes, enclosingPasses);
        return;
    }
    loops.emplace_back(*var, static_cast<int>(from), static_cast<int>(to), static_cast<int>(step),
                       static_cast<int>(std::clamp(digits, 0L, MAX_LOOP_DIGITS)));
    // Also when a reader throws: the shared lists of the banks outlive this definition.
    struct Scope {
        LoopList& loops;
        LoopList::iterator self;
        long outerPasses;
        ~Scope() {
            loops.erase(self);
            enclosingPasses = outerPasses;
        }
    } scope{loops, std::prev(loops.end()), enclosingPasses};
    enclosingPasses *= passes;
    do {
        readChildren(node);
    } while (scope.self->advance());
}

std::string substitute(std::string text, const LoopList& loops) {
    for (const LoopData& loop : loops) {
        const std::string key = "[" + loop.name + "]";
        const std::string value = loop.getString();
        for (size_t at = text.find(key); at != std::string::npos; at = text.find(key)) {
            text.replace(at, key.size(), value);
        }
    }
    return text;
}

}  // namespace xml
}  // namespace norvane
