#include "xml/xml.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/files.h"
#include "tools/convert.h"

using norvane::xml::Node;

namespace {

std::unique_ptr<Node> load(const std::string& path) { return std::unique_ptr<Node>(norvane::xml::loadXML(path.c_str())); }

std::string nested(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<a>";
    for (int i = 0; i < depth; ++i) text += "</a>";
    return text;
}

}  // namespace

TEST(Xml, WriteThenReadReproducesTheTreeInLatin1AndTypedReadsFollowTheCLibrary) {
    const std::string path = writeFile("roundtrip.xml", "<a x=\"1\"><b/>text is dropped<c y=\"&lt;&quot;\"/></a>");
    std::unique_ptr<Node> root = load(path);
    (*root->children.front())["name"] = "Sch\xf6n & \xbfqu\xe9? \xff";
    root->saveXML(path.c_str());
    EXPECT_EQ(readFile(path), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<a x=\"1\">\n"
                              "  <b name=\"Sch\xf6n &amp; \xbfqu\xe9? \xff\"/>\n  <c y=\"&lt;&quot;\"/>\n</a>\n");
    EXPECT_EQ(load(path)->children.front()->getAttribute("name", ""), "Sch\xf6n & \xbfqu\xe9? \xff");
    // A UTF-8 document yields the same Latin-1 bytes; what Latin-1 cannot hold becomes '?', and the
    // character after a four-byte one survives.
    EXPECT_EQ(load(writeFile("utf8.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                                         "<a n=\"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80x\"/>"))
                  ->getAttribute("n", ""),
              "\xe9??x");

    Node node("n", nullptr);
    node["z"] = "last";
    node.setAttributeFloat("f", 0.5f);
    node.setAttributeFloat("g", 1234567.0f);
    node.setAttributeBool("b", false);
    node.setAttributeLong("l", -12);
    EXPECT_EQ(node.toString(2), "  <n b=\"false\" f=\"0.5\" g=\"1.23457e+06\" l=\"-12\" z=\"last\"/>\n");
    const struct {
        const char* value;
        long asLong;
        bool asBool;
    } cases[] = {{"0x10", 16, false}, {"010", 8, false}, {"12abc", 12, false}, {"1", 1, true}, {"t", 0, true},
                 {"true", 0, true},   {"True", 0, false}};
    for (const auto& c : cases) {
        node["v"] = c.value;
        EXPECT_EQ(node.getAttributeLong("v", 99), c.asLong) << c.value;
        EXPECT_EQ(node.getAttributeBool("v", true), c.asBool) << c.value;
    }
    EXPECT_TRUE(node.getAttributeLong("missing", 7) == 7 && node.getAttributeBool("missing", true));
    EXPECT_EQ(norvane::toStr<int>(5, 3, '0') + norvane::toStr<int>(1234, 3, '0'), "0051234");  // pads, never cuts

    // Children move between parents and leave them when deleted.
    Node a, b;
    Node* child = new Node("c", nullptr);
    a += child;
    b += child;
    EXPECT_TRUE(a.children.empty() && child->parent == &b);
    delete child;
    EXPECT_TRUE(b.children.empty());
}

// Files nested a hundred thousand deep used to be read whole, and destroying the tree, one recursion
// per level, overflowed the stack.
TEST(Xml, BadFilesThrowTheirTextAndNeverCrash) {
    std::string big = "<a>\n";  // larger than one read buffer, with the fault far inside
    for (int i = 0; i < 500; ++i) big += "  <item value=\"" + std::to_string(i) + "\"/>\n";
    const std::string tooDeep = writeFile("deeper.xml", nested(norvane::xml::MAX_XML_DEPTH + 1));
    const std::string deepest = writeFile("deepest.xml", nested(100000));
    const std::pair<std::string, std::string> cases[] = {
        {"/nonexistent/a.xml", "Could not open XML file \"/nonexistent/a.xml\""},
        {writeFile("malformed.xml", "<a>\n<b>\n</a>"), "mismatched tag at line 3"},
        {writeFile("truncated.xml", "<a>\n  <b x=\"1\"/>\n  <c"), "unclosed token at line 3"},
        {writeFile("binary.xml", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16)), "not well-formed (invalid token) at line 1"},
        {writeFile("two_roots.xml", "<a/><b/>"), "junk after document element at line 1"},
        {writeFile("big.xml", big + "  <oops\n</a>\n"), "not well-formed (invalid token) at line 503"},
        {tooDeep, "XML file \"" + tooDeep + "\" nests elements deeper than 1024 levels"},
        {deepest, "XML file \"" + deepest + "\" nests elements deeper than 1024 levels"}};
    for (const auto& [path, text] : cases) EXPECT_EQ(thrownBy([&] { load(path); }), text);
    EXPECT_EQ(load(writeFile("empty.xml", "")), nullptr);
    int depth = 0;
    std::unique_ptr<Node> root = load(writeFile("deep.xml", nested(norvane::xml::MAX_XML_DEPTH)));
    for (const Node* n = root.get(); n; n = n->children.empty() ? nullptr : n->children.front()) ++depth;
    EXPECT_EQ(depth, norvane::xml::MAX_XML_DEPTH);
}
