#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "debug/log.h"
#include "norvane.h"
#include "support/captured.h"
#include "xml/xml.h"

using norvane::xml::LoopList;
using norvane::xml::Node;

namespace {

std::unique_ptr<Node> loop(const std::map<std::string, std::string>& attributes) {
    std::unique_ptr<Node> node(new Node);
    node->name = "loop";
    node->attributes = attributes;
    return node;
}

class LoopBounds : public testing::Test {
protected:
    void SetUp() override { captured([] { norvane::init(0, false); }); }  // names the log groups
    // The values the body saw, and the log.
    std::vector<std::string> run(const Node* node, std::string* log) {
        std::vector<std::string> values;
        *log = captured([&] {
            norvane::xml::readLoop(node, loops, norvane::dbgImages,
                                   [&](const Node*) { values.push_back(norvane::xml::substitute("[i]", loops)); });
        });
        return values;
    }

    LoopList loops;
};

}  // namespace

// Hostile loops all end: a step that does not fit an int used to be cut, even to 0, and the loop
// then never reached its end.
TEST_F(LoopBounds, StepsAndPaddingsOutsideIntAreRefused) {
    const std::pair<std::map<std::string, std::string>, const char*> refused[] = {
        {{{"var", "i"}, {"from", "5"}, {"to", "0"}, {"step", "-4294967296"}}, "[5;0] (step: -4294967296)"},
        {{{"var", "i"}, {"from", "0"}, {"to", "9"}, {"step", "4294967297"}}, "[0;9] (step: 4294967297)"},
        {{{"var", "i"}, {"from", "5"}, {"to", "1"}, {"step", "-99999999999999999999"}},
         "[5;1] (step: -9223372036854775808)"},
        {{{"var", "i"}, {"from", "0"}, {"to", "10000"}}, "[0;10000] (step: 1)"},
    };
    std::string log;
    for (const auto& [attributes, range] : refused) {
        EXPECT_TRUE(run(loop(attributes).get(), &log).empty()) << range;
        EXPECT_EQ(log, std::string("[norvane:images] (error) Loop range invalid: i ") + range + ". Skipping loop.\n");
    }
    // A padding whose width would not fit an int pads nothing rather than gigabytes.
    EXPECT_EQ(run(loop({{"var", "i"}, {"from", "1"}, {"to", "2"}, {"digits", "-2147483649"}}).get(), &log),
              (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(run(loop({{"var", "i"}, {"from", "7"}, {"to", "6"}, {"step", "-1"}, {"digits", "3"}}).get(), &log),
              (std::vector<std::string>{"007", "006"}));
}

// Nested loops multiply their passes: the bound holds for the product, and a reader that throws
// leaves neither its loop nor its count behind.
TEST_F(LoopBounds, NestedLoopsShareOneBound) {
    std::unique_ptr<Node> outer = loop({{"var", "o"}, {"from", "1"}, {"to", "200"}});
    std::unique_ptr<Node> inner = loop({{"var", "i"}, {"from", "1"}, {"to", "50"}});
    int passes = 0;
    std::string log;
    auto nest = [&] {
        log = captured([&] {
            norvane::xml::readLoop(outer.get(), loops, norvane::dbgImages, [&](const Node*) {
                norvane::xml::readLoop(inner.get(), loops, norvane::dbgImages, [&](const Node*) { ++passes; });
            });
        });
    };
    nest();
    EXPECT_EQ(passes, 200 * 50);
    EXPECT_EQ(log, "");

    (*inner)["to"] = "51";
    passes = 0;
    nest();
    EXPECT_EQ(passes, 0);
    EXPECT_NE(log.find("(error) Loop i: 51 passes, repeated 200 times by the loops around it, are too many. "
                       "Skipping loop.\n"),
              std::string::npos);

    EXPECT_THROW(norvane::xml::readLoop(outer.get(), loops, norvane::dbgImages,
                                        [](const Node*) { throw std::string("broken body"); }),
                 std::string);
    EXPECT_TRUE(loops.empty());
    std::unique_ptr<Node> longest = loop({{"var", "i"}, {"from", "1"}, {"to", "10000"}});
    EXPECT_EQ(run(longest.get(), &log).size(), 10000u);
}
