#include "xml/xml.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "files/sysdirs.h"

using norvane::xml::Node;

namespace {

std::string tmpFile(const std::string& name, const std::string& content) {
    norvane::mkdirs(TEST_TMP_DIR "/");
    const std::string path = std::string(TEST_TMP_DIR) + "/" + name;
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
