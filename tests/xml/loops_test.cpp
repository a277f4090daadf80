#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "debug/log.h"
#include "support/files.h"
#include "xml/xml.h"

using norvane::xml::Node;

namespace {

using Files = std::vector<std::string>;

// The substituted "file" attributes of every "image" of `xml`, its loops expanded.
Files expand(const std::string& xml, std::string* log = nullptr) {
    std::unique_ptr<Node> root(norvane::xml::loadXML(writeFile("loop.xml", "<r>" + xml + "</r>").c_str()));
    Files files;
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

}  // namespace

TEST(XmlLoops, ExpandInBothDirectionsAndNestAndFaultyLoopsAreSkipped) {
    const std::pair<const char*, Files> cases[] = {
        {"<loop var='i' from='3' to='1' step='-1' digits='2'><image file='s[i]'/></loop>", {"s03", "s02", "s01"}},
        {"<loop var='a' from='0' to='1'><loop var='b' from='0' to='1'><image file='[a][b][c]'/></loop></loop>"
         "<image file='[a]'/>",
         {"00[c]", "01[c]", "10[c]", "11[c]", "[a]"}},
        // A range that is not a whole number of steps stops at its last value inside.
        {"<loop var='i' from='1' to='6' step='2'><image file='[i][i]'/></loop>", {"11", "33", "55"}},
        {"<loop var='i' from='2147483646' to='2147483647'><image file='[i]'/></loop>", {"2147483646", "2147483647"}},
        // A padding whose width would not fit an int pads nothing rather than gigabytes.
        {"<loop var='i' from='1' to='2' digits='-2147483649'><image file='[i]'/></loop>", {"1", "2"}},
    };
    for (const auto& [xml, files] : cases) EXPECT_EQ(expand(xml), files) << xml;

    // Hostile loops all end: a step that does not fit an int used to be cut, even to 0, and the
    // loop then never reached its end.
    const std::pair<const char*, const char*> faulty[] = {
        {"from='1' to='3'", "No variable specified for loop."},
        {"var='i' from='1' to='3' step='0'", "Step size 0 invalid: i."},
        {"var='i' from='2' to='2'", "Loop range invalid: i [2;2] (step: 1)."},
        {"var='i' from='1' to='3' step='-1'", "Loop range invalid: i [1;3] (step: -1)."},
        {"var='i' from='0' to='10000'", "Loop range invalid: i [0;10000] (step: 1)."},
        {"var='i' from='5' to='0' step='-4294967296'", "Loop range invalid: i [5;0] (step: -4294967296)."},
        {"var='i' from='0' to='9' step='4294967297'", "Loop range invalid: i [0;9] (step: 4294967297)."},
        {"var='i' from='5' to='1' step='-99999999999999999999'", "Loop range invalid: i [5;1] (step: -9223372036854775808)."},
    };
    for (const auto& [attributes, message] : faulty) {
        std::string log;
        EXPECT_TRUE(expand(std::string("<loop ") + attributes + "><image file='x'/></loop>", &log).empty());
        EXPECT_EQ(log.substr(log.find(' ') + 1), std::string("(error) ") + message + " Skipping loop.\n");  // any group
    }
    // Nested loops multiply their passes; the bound holds for the product, and a reader that throws
    // leaves neither its loop nor its passes behind.
    std::string log;
    const std::string nest = "<loop var='o' from='1' to='200'><loop var='i' from='1' to='";
    EXPECT_EQ(expand(nest + "50'><image/></loop></loop>").size(), 10000u);
    EXPECT_TRUE(expand(nest + "51'><image/></loop></loop>", &log).empty());
    EXPECT_NE(log.find("(error) Loop i: 51 passes, repeated 200 times by the loops around it, are too many. Skipping"),
              std::string::npos);
    std::unique_ptr<Node> loop(norvane::xml::loadXML(writeFile("throws.xml", "<loop var='i' from='1' to='2'/>").c_str()));
    norvane::xml::LoopList loops;
    EXPECT_THROW(norvane::xml::readLoop(loop.get(), loops, norvane::dbgImages,
                                        [](const Node*) { throw std::string("broken body"); }),
                 std::string);
    EXPECT_TRUE(loops.empty());
    EXPECT_EQ(expand("<loop var='i' from='1' to='10000'><image/></loop>").size(), 10000u);
}
