#include "xml/xml.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "files/sysdirs.h"
#include "tools/convert.h"
#include "debug/log.h"
#include <functional>
#include <vector>

using norvane::xml::Node;

namespace {

// Named after the running test too: ctest runs the tests of this file in parallel.
std::string tmpFile(const std::string& name, const std::string& content) {
    norvane::mkdirs(TEST_TMP_DIR "/");
    const std::string path = std::string(TEST_TMP_DIR) + "/" +
                             testing::UnitTest::GetInstance()->current_test_info()->name() + "_" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string readAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

}  // namespace

TEST(Xml, WriteThenReadReproducesTheTree) {
    const std::string path = tmpFile("roundtrip.xml", "<a x=\"1\"><b/>text is dropped<c y=\"&lt;&quot;\"/></a>");
    std::unique_ptr<Node> root(norvane::xml::loadXML(path.c_str()));
    ASSERT_TRUE(root);
    root->saveXML(path.c_str());
    EXPECT_EQ(readAll(path),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<a x=\"1\">\n  <b/>\n  <c y=\"&lt;&quot;\"/>\n</a>\n");
}

TEST(Xml, AttributesAreWrittenByNameAndTypedReadsFollowTheCLibrary) {
    Node node;
    node.name = "n";
    node["z"] = "last";
    node["a"] = "first";
    node.setAttributeFloat("f", 0.5f);
    node.setAttributeFloat("g", 1234567.0f);
    node.setAttributeBool("b", false);
    node.setAttributeLong("l", -12);
    EXPECT_EQ(node.toString(2), "  <n a=\"first\" b=\"false\" f=\"0.5\" g=\"1.23457e+06\" l=\"-12\" z=\"last\"/>\n");

    const struct {
        const char* value;
        long asLong;
        bool asBool;
    } cases[] = {{"0x10", 16, false}, {"010", 8, false}, {"12abc", 12, false}, {"abc", 0, false},
                 {"", 0, false},      {"1", 1, true},    {"t", 0, true},       {"true", 0, true},
                 {"True", 0, false},  {"yes", 0, false}, {"0", 0, false}};
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
    EXPECT_EQ(node.getAttribute("missing", "def"), "def");
}

TEST(Xml, ChildrenMoveBetweenParentsAndDetachWhenDeleted) {
    Node a, b;
    Node* child = new Node("c", nullptr);
    a += child;
    b += child;
    EXPECT_TRUE(a.children.empty());
    ASSERT_EQ(b.children.size(), 1u);
    EXPECT_EQ(child->parent, &b);
    delete child;
    EXPECT_TRUE(b.children.empty());

    Node* kept = new Node("k", nullptr);
    b += kept;
    b -= kept;
    EXPECT_EQ(kept->parent, nullptr);
    EXPECT_TRUE(b.children.empty());
    delete kept;
}

TEST(Xml, Latin1TextSurvivesARoundTrip) {
    const std::string text = "Sch\xf6n & \xbfqu\xe9? \xff";
    Node root;
    root.name = "highscores";
    root["name"] = text;
    const std::string path = tmpFile("latin1.xml", "");
    root.saveXML(path.c_str());
    std::unique_ptr<Node> back(norvane::xml::loadXML(path.c_str()));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->getAttribute("name", ""), text);

    // A UTF-8 document yields the same Latin-1 bytes; what Latin-1 cannot hold becomes '?'.
    const std::string utf8 = tmpFile("utf8.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a n=\"\xc3\xa9\xe2\x82\xac\"/>");
    std::unique_ptr<Node> fromUtf8(norvane::xml::loadXML(utf8.c_str()));
    EXPECT_EQ(fromUtf8->getAttribute("n", ""), "\xe9?");
}

TEST(Xml, BadFilesThrowTheirTextAndNeverCrash) {
    const auto message = [](const std::string& path) {
        try {
            std::unique_ptr<Node> root(norvane::xml::loadXML(path.c_str()));
        } catch (const std::string& text) {
            return text;
        }
        return std::string("no error");
    };
    EXPECT_EQ(message("/nonexistent/a.xml"), "Could not open XML file \"/nonexistent/a.xml\"");
    EXPECT_EQ(message(tmpFile("malformed.xml", "<a>\n<b>\n</a>")), "mismatched tag at line 3");
    EXPECT_EQ(message(tmpFile("truncated.xml", "<a>\n  <b x=\"1\"/>\n  <c")), "unclosed token at line 3");
    EXPECT_EQ(message(tmpFile("binary.xml", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16))),
              "not well-formed (invalid token) at line 1");
    EXPECT_EQ(message(tmpFile("two_roots.xml", "<a/><b/>")), "junk after document element at line 1");
    EXPECT_EQ(norvane::xml::loadXML(tmpFile("empty.xml", "").c_str()), nullptr);

    // A document larger than one read buffer with the fault far inside still names its line.
    std::string big = "<a>\n";
    for (int i = 0; i < 500; ++i) big += "  <item value=\"" + std::to_string(i) + "\"/>\n";
    big += "  <oops\n</a>\n";
    EXPECT_EQ(message(tmpFile("big.xml", big)), "not well-formed (invalid token) at line 503");
}

namespace {

// Expands the loops of `xml`, collecting the substituted "file" attribute of every "image".
std::vector<std::string> expand(const std::string& xml, std::string* log = nullptr) {
    std::unique_ptr<Node> root(norvane::xml::loadXML(tmpFile("loop.xml", xml).c_str()));
    std::vector<std::string> files;
    norvane::xml::LoopList loops;
    std::function<void(const Node*)> read = [&](const Node* parent) {
        for (const Node* child : parent->children) {
            if (child->name == "loop") norvane::xml::readLoop(child, loops, norvane::dbgImages, read);
            if (child->name == "image") files.push_back(norvane::xml::substitute(child->getAttribute("file", ""), loops));
        }
    };
    testing::internal::CaptureStdout();
    read(root.get());
    const std::string out = testing::internal::GetCapturedStdout();
    if (log) *log = out;
    return files;
}

}  // namespace

TEST(XmlLoops, ExpandInBothDirectionsAndNest) {
    using V = std::vector<std::string>;
    EXPECT_EQ(expand("<r><loop var=\"i\" from=\"1\" to=\"3\"><image file=\"s[i].png\"/></loop></r>"),
              (V{"s1.png", "s2.png", "s3.png"}));
    EXPECT_EQ(expand("<r><loop var=\"i\" from=\"3\" to=\"1\" step=\"-1\" digits=\"2\"><image file=\"[i]\"/></loop></r>"),
              (V{"03", "02", "01"}));
    EXPECT_EQ(expand("<r><loop var=\"a\" from=\"0\" to=\"1\"><loop var=\"b\" from=\"0\" to=\"1\">"
                     "<image file=\"[a][b][c]\"/></loop></loop><image file=\"[a]\"/></r>"),
              (V{"00[c]", "01[c]", "10[c]", "11[c]", "[a]"}));
    // A range that is not a whole number of steps stops at its last value inside.
    EXPECT_EQ(expand("<r><loop var=\"i\" from=\"1\" to=\"6\" step=\"2\"><image file=\"[i][i]\"/></loop></r>"),
              (V{"11", "33", "55"}));
}

TEST(XmlLoops, FaultyLoopsAreReportedAndSkipped) {
    std::string log;
    const char* faulty[][2] = {
        {"<r><loop from=\"1\" to=\"3\"><image file=\"x\"/></loop></r>",
         "(error) No variable specified for loop. Skipping loop.\n"},
        {"<r><loop var=\"i\" from=\"1\" to=\"3\" step=\"0\"><image file=\"x\"/></loop></r>",
         "(error) Step size 0 invalid: i. Skipping loop.\n"},
        {"<r><loop var=\"i\" from=\"2\" to=\"2\"><image file=\"x\"/></loop></r>",
         "(error) Loop range invalid: i [2;2] (step: 1). Skipping loop.\n"},
        {"<r><loop var=\"i\" from=\"1\" to=\"3\" step=\"-1\"><image file=\"x\"/></loop></r>",
         "(error) Loop range invalid: i [1;3] (step: -1). Skipping loop.\n"},
        {"<r><loop var=\"i\" from=\"0\" to=\"2000000000\"><image file=\"x\"/></loop></r>",
         "(error) Loop range invalid: i [0;2000000000] (step: 1). Skipping loop.\n"},
    };
    for (const auto& c : faulty) {
        EXPECT_TRUE(expand(c[0], &log).empty()) << c[0];
        EXPECT_NE(log.find(c[1]), std::string::npos) << log;
    }
}

TEST(Xml, ToStrPadsButNeverCuts) {
    EXPECT_EQ(norvane::toStr<int>(5, 3, '0'), "005");
    EXPECT_EQ(norvane::toStr<int>(1234, 3, '0'), "1234");
    EXPECT_EQ(norvane::toStr<int>(5, 0, '0'), "5");
    EXPECT_EQ(norvane::toStr<int>(42), "42");
}
