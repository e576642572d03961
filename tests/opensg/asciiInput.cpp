// What the tests of the ASCII reader share.
#include "opensg/asciiInput.h"

#include <gtest/gtest.h>

using namespace osg;

namespace asciiInput {

typedef std::vector<std::string> Lines;

std::string sheetNode(const std::string& fields) {
    return "Node { attachments [ FileSheet { " + fields + " } ] }\n";
}

FileSheetPtr sheetOf(const NodePtr& node) {
    if (node == NullFC) return NullFC;
    return FileSheetPtr::dcast(node->findAttachment(FileSheet::getClassType()));
}

namespace {

/// Two sheets that share a node, as OpenSG writes them for a node of any name.
std::string sharedUnder(const std::string& name) {
    return "#OSG V1.0 \nNode {\n    attachments [ \n        FileSheet {\n            target\n"
           "                DEF " +
           name +
           " Node {\n                    travMask 9\n                }\n            speed 2\n"
           "        }\n     ] \n    children [\n        USE " +
           name + "\n        Node {\n            travMask 8\n        }\n    ]\n}\n";
}

} // namespace

void expectNameAccepted(const std::string& name) {
    LogLines log;
    const Scene scene(readText(sharedUnder(name)));
    ASSERT_FALSE(scene.isNull()) << log.take()[0];
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    ASSERT_NE(sheet->getTarget(), NullFC);
    EXPECT_EQ(sheet->getTarget()->getTravMask(), 9u);
    EXPECT_EQ(sheet->getSpeed(), 2.f);
    ASSERT_EQ(scene.at({0})->getNChildren(), 2u);
    EXPECT_EQ(scene.at({0, 0}), sheet->getTarget());
    EXPECT_EQ(scene.at({0, 1})->getTravMask(), 8u);
    // Blanks around a name that is one word cannot be told from those that separate words.
    std::string expected = name;
    if (expected == " leading" || expected == "trailing ")
        expected = expected == " leading" ? "leading" : "trailing";
    EXPECT_EQ(nameOf(scene.at({0, 0})), expected.empty() ? "(none)" : expected);
    EXPECT_EQ(log.take(), Lines());
}

void expectFieldLeftOut(const std::string& field) {
    LogLines log;
    const Scene scene(readText(sheetNode(field + "\n title \"t\"") + "Node { }"));
    ASSERT_FALSE(scene.isNull()) << log.take()[0];
    EXPECT_EQ(scene->getNChildren(), 2u);
    const FileSheetPtr sheet = sheetOf(scene.at({0}));
    EXPECT_EQ(sheet->getSpeed(), 1.f);
    EXPECT_EQ(sheet->getTitle(), "t");
    EXPECT_EQ(sheet->getItems().size(), 0u);
    EXPECT_EQ(log.take().size(), 1u);
}

void expectTextRead(const TextCase& text) {
    const Values values(std::string("string ") + text.written + "\nint32 7\n");
    ASSERT_FALSE(values.isRefused());
    EXPECT_EQ(values->getString(), text.meant);
    EXPECT_EQ(values->getInt32(), 7);
}

} // namespace asciiInput
