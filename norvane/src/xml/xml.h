#ifndef NORVANE_XML_XML_H
#define NORVANE_XML_XML_H

#include <functional>
#include <list>
#include <map>
#include <string>

namespace norvane {
namespace xml {

// One element: name, attributes and child elements. Text, comments and processing instructions are dropped.
// Names and values are held as ISO-8859-1 bytes, the encoding saveXML declares and the game's fonts
// index, so a document read and written again keeps its accented letters; other characters become '?'.
class Node {
public:
    Node() = default;
    Node(const char* name, const char** atts);
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node();  // detaches from the parent, then destroys the subtree

    Node& operator+=(Node* child);  // takes ownership; moves a child away from its old parent
    Node& operator-=(Node* child);  // hands ownership back to the caller

    std::string& operator[](std::string attributeName);
    const std::string* getAttribute(std::string name) const;
    std::string getAttribute(std::string name, std::string def) const;
    long getAttributeLong(std::string name, long def) const;
    float getAttributeFloat(std::string name, float def) const;
    bool getAttributeBool(std::string name, bool def) const;
    void setAttributeLong(std::string name, long value);
    void setAttributeFloat(std::string name, float value);
    void setAttributeBool(std::string name, bool value);

    // Writes the document with the ISO-8859-1 declaration. The file is replaced only once the new
    // one is complete, so a crash or a full disk keeps the old one; failures are silently skipped.
    void saveXML(const char* filename) const;
    std::string toString(int indent) const;

    Node* parent = nullptr;
    std::string name;
    std::map<std::string, std::string> attributes;
    std::list<Node*> children;

private:
    void write(std::string& out, int indent) const;
};

class XMLHandler {
public:
    virtual ~XMLHandler() = default;
    virtual void startElement(const char* name, const char** atts);
    virtual void endElement(const char* name);
};

// Builds a node tree; whoever takes `root` owns it. Elements nested deeper than the node
// functions can recurse are dropped, and `tooDeep` tells so.
class DOMXMLHandler : public XMLHandler {
public:
    void startElement(const char* name, const char** atts) override;
    void endElement(const char* name) override;

    Node* root = nullptr;
    Node* current = nullptr;
    int depth = 0;  // of the element being read, dropped ones included
    bool tooDeep = false;
};

// No file of the game nests more than a few levels; a tree much deeper would exhaust the stack
// when it is written or destroyed, both of which recurse.
const int MAX_XML_DEPTH = 1024;

class XMLReader {
public:
    explicit XMLReader(XMLHandler* handler) : handler(handler) {}
    void readFile(std::string filename);  // throws std::string on open, read or parse errors

private:
    XMLHandler* handler;
};

void xmlStart(void* userData, const char* name, const char** atts);
void xmlEnd(void* userData, const char* name);

// The caller owns the result; null for a file without any element. Throws std::string on errors,
// also for elements nested deeper than MAX_XML_DEPTH.
Node* loadXML(const char* filename);
std::string encode(std::string text);

// One active "loop" element of a bank definition.
struct LoopData {
    LoopData() = default;
    LoopData(std::string name, int from, int to, int step, int digits);

    bool advance();
    std::string getString() const;

    std::string name;
    int current = 0;
    int to = 0;
    int step = 1;
    int digits = 0;
};

using LoopList = std::list<LoopData>;

// Runs `readChildren` once per value of the loop element `node`, with the loop appended to `loops`.
// Faulty loops are reported in `debugGroup` and skipped.
void readLoop(const Node* node, LoopList& loops, int debugGroup, const std::function<void(const Node*)>& readChildren);

// Replaces "[name]" by the value of each active loop, outermost first.
std::string substitute(std::string text, const LoopList& loops);

}  // namespace xml
}  // namespace norvane

#endif
