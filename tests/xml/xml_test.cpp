#include "xml/xml.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "debug/log.h"
#include "support/files.h"
#include "tools/convert.h"

using norvane::xml::Node;

TEST(Xml, WriteThenReadReproducesTheTreeInLatin1) {
    const std::string path = writeFile("roundtrip.xml", "<a x=\"1\"><b/>text is dropped<c y=\"&lt;&quot;\"/></a>");
    std::unique_ptr<Node> root(norvane::xml::loadXML(path.c_str()));
    ASSERT_TRUE(root);
    (*root->children.front())["name"] = "Sch\xf6n & \xbfqu\xe9? \xff";
    root->saveXML(path.c_str());
    EXPECT_EQ(readFile(path), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<a x=\"1\">\n"
                              "  <b name=\"Sch\xf6n &amp; \xbfqu\xe9? \xff\"/>\n  <c y=\"&lt;&quot;\"/>\n</a>\n");
    std::unique_ptr<Node> back(norvane::xml::loadXML(path.c_str()));
    EXPECT_EQ(back->children.front()->getAttribute("name", ""), "Sch\xf6n & \xbfqu\xe9? \xff");
    // A UTF-8 document yields the same Latin-1 bytes; what Latin-1 cannot hold becomes '?'.
    std::unique_ptr<Node> fromUtf8(norvane::xml::loadXML(
        writeFile("utf8.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a n=\"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\"/>").c_str()));
    EXPECT_EQ(fromUtf8->getAttribute("n", ""), "\xe9??");
}

TEST(Xml, AttributesAreWrittenByNameAndTypedReadsFollowTheCLibrary) {
    Node node;
    node.name = "n";
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
    } cases[] = {{"0x10", 16, false}, {"010", 8, false},  {"12abc", 12, false}, {"", 0, false}, {"1", 1, true},
                 {"t", 0, true},      {"true", 0, true},  {"True", 0, false},   {"0", 0, false}};
    for (const auto& c : cases) {
        node["v"] = c.value;
        EXPECT_EQ(node.getAttributeLong("v", 99), c.asLong) << c.value;
        EXPECT_EQ(node.getAttributeBool("v", true), c.asBool) << c.value;
    }
    node["v"] = "2.5e1x";
    EXPECT_FLOAT_EQ(node.getAttributeFloat("v", 1), 25.0f);
    EXPECT_EQ(node.getAttributeLong("missing", 7), 7);
    EXPECT_TRUE(node.getAttributeBool("missing", true));
    EXPECT_EQ(node.getAttribute("missing"), nullptr);
    EXPECT_EQ(norvane::toStr<int>(5, 3, '0') + norvane::toStr<int>(1234, 3, '0'), "0051234");  // pads, never cuts

    // Children move between parents and leave them when deleted.
    Node a, b;
    Node* child = new Node("c", nullptr);
    a += child;
    b += child;
    EXPECT_TRUE(a.children.empty());
    EXPECT_EQ(child->parent, &b);
    delete child;
    EXPECT_TRUE(b.children.empty());
}

TEST(Xml, BadFilesThrowTheirTextAndNeverCrash) {
    const auto message = [](const std::string& path) {
        return thrownBy([&] { std::unique_ptr<Node>(norvane::xml::loadXML(path.c_str())); });
    };
    std::string big = "<a>\n";  // larger than one read buffer, with the fault far inside
    for (int i = 0; i < 500; ++i) big += "  <item value=\"" + std::to_string(i) + "\"/>\n";
    const std::pair<std::string, std::string> cases[] = {
        {"/nonexistent/a.xml", "Could not open XML file \"/nonexistent/a.xml\""},
        {writeFile("malformed.xml", "<a>\n<b>\n</a>"), "mismatched tag at line 3"},
        {writeFile("truncated.xml", "<a>\n  <b x=\"1\"/>\n  <c"), "unclosed token at line 3"},
        {writeFile("binary.xml", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16)), "not well-formed (invalid token) at line 1"},
        {writeFile("two_roots.xml", "<a/><b/>"), "junk after document element at line 1"},
        {writeFile("big.xml", big + "  <oops\n</a>\n"), "not well-formed (invalid token) at line 503"}};
    for (const auto& [path, text] : cases) EXPECT_EQ(message(path), text);
    EXPECT_EQ(norvane::xml::loadXML(writeFile("empty.xml", "").c_str()), nullptr);
}

namespace {

// The substituted "file" attributes of every "image" of `xml`, its loops expanded.
std::vector<std::string> expand(const std::string& xml, std::string* log = nullptr) {
    std::unique_ptr<Node> root(norvane::xml::loadXML(writeFile("loop.xml", "<r>" + xml + "</r>").c_str()));
    std::vector<std::string> files;
    norvane::xml::LoopList loops;
    std::function<void(const Node*)> read = [&](const Node* parent) {
        for (const Node* child : parent->children) {
            if (child->name == "loop") norvane::xml::readLoop(child, loops, norvane::dbgImages, read);
            if (child->name == "image") files.push_back(norvane::xml::substitute(child->getAttribute("file", ""), loops));
        }
    };
    const std::string out = captured([&] { read(root.get()); });
    if (log) *log = out;
    return files;
}

using Files = std::vector<std::string>;

}  // namespace

TEST(XmlLoops, ExpandInBothDirectionsAndNestAndFaultyLoopsAreSkipped) {
    EXPECT_EQ(expand("<loop var=\"i\" from=\"3\" to=\"1\" step=\"-1\" digits=\"2\"><image file=\"s[i]\"/></loop>"),
              (Files{"s03", "s02", "s01"}));
    EXPECT_EQ(expand("<loop var=\"a\" from=\"0\" to=\"1\"><loop var=\"b\" from=\"0\" to=\"1\">"
                     "<image file=\"[a][b][c]\"/></loop></loop><image file=\"[a]\"/>"),
              (Files{"00[c]", "01[c]", "10[c]", "11[c]", "[a]"}));
    // A range that is not a whole number of steps stops at its last value inside.
    EXPECT_EQ(expand("<loop var=\"i\" from=\"1\" to=\"6\" step=\"2\"><image file=\"[i][i]\"/></loop>"),
              (Files{"11", "33", "55"}));
    const std::pair<const char*, const char*> faulty[] = {
        {"from=\"1\" to=\"3\"", "No variable specified for loop. Skipping loop."},
        {"var=\"i\" from=\"1\" to=\"3\" step=\"0\"", "Step size 0 invalid: i. Skipping loop."},
        {"var=\"i\" from=\"2\" to=\"2\"", "Loop range invalid: i [2;2] (step: 1). Skipping loop."},
        {"var=\"i\" from=\"1\" to=\"3\" step=\"-1\"", "Loop range invalid: i [1;3] (step: -1). Skipping loop."},
        {"var=\"i\" from=\"0\" to=\"2000000000\"", "Loop range invalid: i [0;2000000000] (step: 1). Skipping loop."},
    };
    for (const auto& [attributes, message] : faulty) {
        std::string log;
        EXPECT_TRUE(expand(std::string("<loop ") + attributes + "><image file=\"x\"/></loop>", &log).empty());
        EXPECT_EQ(log.substr(log.find(' ') + 1), std::string("(error) ") + message + "\n");  // any group
    }
}
