#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/files.h"
#include "xml/xml.h"

// A file of elements nested a hundred thousand deep used to be read whole, and destroying the tree,
// one recursion per level, overflowed the stack.
TEST(XmlDepth, FilesNestedDeeperThanTheTreeCanHoldAreRefused) {
    auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) text += "<a x=\"" + std::to_string(i) + "\">";
        for (int i = 0; i < depth; ++i) text += "</a>";
        return text;
    };
    const std::string deepest = writeFile("deepest.xml", nested(norvane::xml::MAX_XML_DEPTH));
    std::unique_ptr<norvane::xml::Node> root(norvane::xml::loadXML(deepest.c_str()));
    int depth = 0;
    for (const norvane::xml::Node* n = root.get(); n; n = n->children.empty() ? nullptr : n->children.front()) {
        EXPECT_EQ(n->getAttributeLong("x", -1), depth++);
    }
    EXPECT_EQ(depth, norvane::xml::MAX_XML_DEPTH);

    for (int tooDeep : {norvane::xml::MAX_XML_DEPTH + 1, 100000}) {
        const std::string file = writeFile("deeper.xml", nested(tooDeep));
        EXPECT_EQ(thrownBy([&] { delete norvane::xml::loadXML(file.c_str()); }),
                  "XML file \"" + file + "\" nests elements deeper than 1024 levels")
            << tooDeep;
    }
}
