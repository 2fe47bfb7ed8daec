#include <gtest/gtest.h>

#include "engine/api/iformcontrol.h"
#include "engine/api/iobjects.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "tests/xlsx/parts/images.h"

namespace vellum::test {
namespace {

ISheetObjects<char>& objectsOf(ISheetT<char>& sheet) {
    return dynamic_cast<ISheetObjects<char>&>(sheet);
}

void addSampleComments(ObjectPackage& package) {
    package.addComments(
        "<authors><author>Ann</author><author/></authors><commentList>"
        "<comment ref=\"C3\" authorId=\"0\"><text><r><rPr><b/></rPr><t>Ann:</t></r><r><t xml:space=\"preserve\"> "
        "f\xC3\xBCr_x000A_</t></r></text></comment>"
        "<comment ref=\"B1\" authorId=\"1\"><text><t>lone</t></text></comment>"
        "<comment ref=\"A1\" authorId=\"9\"><text/></comment>"
        "<comment ref=\"C3\" authorId=\"0\"><text><t>second</t></text></comment>"
        "<comment ref=\"nowhere\" authorId=\"0\"><text><t>x</t></text></comment></commentList>");
}

TEST(Comments, TextAuthorAndOrder) {
    for (const bool strict : {false, true}) {
        ObjectPackage package(strict);
        addSampleComments(package);
        const BookPtr book = package.book();
        ISheetT<char>* const sheet = book->getSheet(0);
        EXPECT_STREQ(sheet->readComment(2, 2), "Ann: f\xC3\xBCr_x000A_");  // the first of the cell, as it stands
        EXPECT_STREQ(sheet->readComment(0, 1), "lone");
        EXPECT_STREQ(sheet->readComment(0, 0), "");
        EXPECT_STREQ(book->errorMessage(), "ok");
        const auto comments = objectsOf(*sheet).comments();
        ASSERT_EQ(comments.size(), 3u);
        EXPECT_EQ(comments[0].author, std::nullopt);
        EXPECT_EQ(comments[1].author, "");
        EXPECT_EQ(comments[2].author, "Ann");
        EXPECT_EQ(comments[2].row, 2);
        EXPECT_EQ(comments[2].text, "Ann: f\xC3\xBCr_x000A_");
    }
}

TEST(Comments, WhatIsNotThereOrNotDone) {
    ObjectPackage package;
    const BookPtr without = package.book();
    EXPECT_EQ(without->getSheet(0)->readComment(0, 0), nullptr);
    EXPECT_STREQ(without->errorMessage(), "error in readComment");
    addSampleComments(package);
    const BookPtr book = package.book();
    ISheetT<char>* const sheet = book->getSheet(0);
    const auto before = savedParts(*book);
    for (const auto& [row, col] : {std::pair(5, 5), std::pair(-1, 0), std::pair(0, -1)}) {
        EXPECT_EQ(sheet->readComment(row, col), nullptr);
        EXPECT_STREQ(book->errorMessage(), "error in readComment");
    }
    EXPECT_FALSE(sheet->writeComment(0, 0, "text", "Ann", 0, 0));
    EXPECT_STREQ(book->errorMessage(), "not supported");
    EXPECT_FALSE(sheet->removeComment(2, 2));
    EXPECT_STREQ(book->errorMessage(), "not supported");
    EXPECT_EQ(savedParts(*book), before);
}

std::string control(int number) {
    return "<control shapeId=\"1\" r:id=\"rId" + std::to_string(20 + number) + "\" name=\"c\"/>";
}
std::string choice(const std::string& first, const std::string& fallback) {
    return "<mc:AlternateContent><mc:Choice Requires=\"x14\">" + first + "</mc:Choice><mc:Fallback>" + fallback +
           "</mc:Fallback></mc:AlternateContent>";
}

TEST(Controls, CountedOnceWhereverTheyStand) {
    const struct {
        const char* name;
        std::string inSheet;
        int total;
    } cases[] = {
        {"none", "", 0},
        {"plain", "<controls>" + control(1) + control(2) + "</controls>", 2},
        {"each in an alternative", "<controls>" + choice(control(1), control(1)) + control(2) + "</controls>", 2},
        {"all in an alternative", choice("<controls>" + choice(control(1), "") + control(2) + "</controls>", ""), 2},
        {"a fallback alone",
         "<mc:AlternateContent><mc:Fallback><controls>" + control(1) +
             "</controls></mc:Fallback></mc:AlternateContent>",
         1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ObjectPackage package;
        package.inSheet = c.inSheet;
        package.addControl(1, "objectType=\"CheckBox\"");
        const BookPtr book = package.book();
        ISheetT<char>* const sheet = book->getSheet(0);
        EXPECT_EQ(sheet->formControlTotal(), c.total);
        EXPECT_EQ(sheet->formControlAt(c.total), nullptr);
        EXPECT_STREQ(book->errorMessage(), "index is out of range");
        if (c.total == 0) continue;
        IFormControlT<char>* const first = sheet->formControlAt(0);
        ASSERT_NE(first, nullptr) << book->errorMessage();
        EXPECT_STREQ(first->objectType(), "CheckBox");
        if (c.total == 1) continue;
        EXPECT_EQ(sheet->formControlAt(1), nullptr);
        EXPECT_STREQ(book->errorMessage(), "the control has no properties of a form control");
    }
}

template <class CharT>
struct Texts;
template <>
struct Texts<char> {
    static std::string of(const std::string& text) { return text; }
};
template <>
struct Texts<wchar_t> {
    static std::wstring of(const std::string& text) { return {text.begin(), text.end()}; }
};

template <class CharT>
IBookT<CharT>* loaded(const ObjectPackage& package) {
    IBookT<CharT>* book;
    if constexpr (std::is_same_v<CharT, char>) {
        book = vlCreateXMLBook<char>();
    } else {
        book = vlCreateXMLBook<wchar_t>();
    }
    const std::string bytes = package.bytes();
    EXPECT_TRUE(book->loadMemory(bytes.data(), bytes.size())) << book->errorMessage();
    book->setLocale("UTF-8");
    return book;
}

template <class CharT>
class EveryProperty {
    using C = IFormControlT<CharT>;

public:
    explicit EveryProperty(bool strict) {
        ObjectPackage package(strict);
        package.inSheet = "<controls>" + control(1) + "</controls>";
        package.addControl(1, "");
        book.reset(loaded<CharT>(package));
        c = book->getSheet(0)->formControlAt(0);
    }

    void expectReadAndWritten() {
        ASSERT_NE(c, nullptr) << book->errorMessage();
        for (const Text& p : texts) expectText(p);
        int value = firstNumber;
        for (const Number& p : numbers) {
            EXPECT_EQ((c->*p.get)(), p.absent) << value;
            EXPECT_TRUE((c->*p.set)(value++));
        }
        for (const Flag& p : flags) {
            EXPECT_FALSE((c->*p.get)());
            EXPECT_TRUE((c->*p.set)(true));
        }
    }

    void expectNoneInThePlaceOfAnother() {
        for (const Text& p : texts) EXPECT_EQ((c->*p.get)(), of(p.value));
        int value = firstNumber;
        for (const Number& p : numbers) EXPECT_EQ((c->*p.get)(), value++);
        for (const Flag& p : flags) EXPECT_TRUE((c->*p.get)());
        EXPECT_STREQ(book->errorMessage(), "ok");
    }

private:
    struct Text {
        const CharT* (C::*get)();
        bool (C::*set)(const CharT*);
        const char *absent, *value;
        bool listed;
    };
    struct Number {
        int (C::*get)();
        bool (C::*set)(int);
        int absent;
    };
    struct Flag {
        bool (C::*get)();
        bool (C::*set)(bool);
    };
    static constexpr int firstNumber = 101;
    static constexpr Text texts[] = {
        {&C::objectType, &C::setObjectType, nullptr, "Drop", true},
        {&C::checked, &C::setChecked, "Unchecked", "Mixed", true},
        {&C::dropStyle, &C::setDropStyle, nullptr, "simple", true},
        {&C::editVal, &C::setEditVal, nullptr, "number", true},
        {&C::fmlaGroup, &C::setFmlaGroup, nullptr, "$A$1", false},
        {&C::fmlaLink, &C::setFmlaLink, nullptr, "$A$2", false},
        {&C::fmlaRange, &C::setFmlaRange, nullptr, "S1!$A$1:$A$9", false},
        {&C::fmlaTxbx, &C::setFmlaTxbx, nullptr, "$A$4", false},
        {&C::multiSel, &C::setMultiSel, nullptr, "1,2", false},
        {&C::seltype, &C::setSeltype, "single", "multi", true},
        {&C::textHAlign, &C::setTextHAlign, "left", "right", true},
        {&C::textVAlign, &C::setTextVAlign, "top", "bottom", true},
    };
    static constexpr Number numbers[] = {{&C::dropLines, &C::setDropLines, 8},
                                         {&C::dx, &C::setDx, 0},
                                         {&C::inc, &C::setInc, 1},
                                         {&C::max, &C::setMax, 0},
                                         {&C::min, &C::setMin, 0},
                                         {&C::page, &C::setPage, 0},
                                         {&C::sel, &C::setSel, 0},
                                         {&C::val, &C::setVal, 0},
                                         {&C::widthMin, &C::setWidthMin, 0}};
    static constexpr Flag flags[] = {{&C::colored, &C::setColored},
                                     {&C::firstButton, &C::setFirstButton},
                                     {&C::horiz, &C::setHoriz},
                                     {&C::justLastX, &C::setJustLastX},
                                     {&C::lockText, &C::setLockText},
                                     {&C::multiLine, &C::setMultiLine},
                                     {&C::noThreeD, &C::setNoThreeD},
                                     {&C::noThreeD2, &C::setNoThreeD2},
                                     {&C::passwordEdit, &C::setPasswordEdit},
                                     {&C::verticalBar, &C::setVerticalBar}};

    static std::basic_string<CharT> of(const std::string& text) { return Texts<CharT>::of(text); }

    void expectText(const Text& p) {
        SCOPED_TRACE(p.value);
        const CharT* const before = (c->*p.get)();
        EXPECT_EQ(before ? std::basic_string<CharT>(before) : of(""), of(p.absent ? p.absent : ""));
        EXPECT_EQ(before == nullptr, p.absent == nullptr);
        EXPECT_FALSE((c->*p.set)(nullptr));
        EXPECT_STREQ(book->errorMessage(), "text is NULL");
        EXPECT_EQ((c->*p.set)(of("anything").c_str()), !p.listed);
        EXPECT_STREQ(book->errorMessage(), p.listed ? "the control property has no such value" : "ok");
        EXPECT_TRUE((c->*p.set)(of(p.value).c_str()));
        EXPECT_EQ((c->*p.get)(), of(p.value));
    }

    std::unique_ptr<IBookT<CharT>, Release> book;
    C* c = nullptr;
};

template <class CharT>
void expectEveryProperty(bool strict) {
    EveryProperty<CharT> properties(strict);
    properties.expectReadAndWritten();
    if (!testing::Test::HasFatalFailure()) properties.expectNoneInThePlaceOfAnother();
}

TEST(Controls, EveryPropertyIsReadAndWritten) {
    for (const bool strict : {false, true}) {
        expectEveryProperty<char>(strict);
        expectEveryProperty<wchar_t>(strict);
    }
}

TEST(Controls, WhatIsSetStandsInThePart) {
    ObjectPackage package;
    package.inSheet = "<controls>" + control(1) + "</controls>";
    package.addControl(1, "objectType=\"List\" unknown=\"kept\"", "<itemLst><item val=\"one\"/></itemLst>");
    const BookPtr book = package.book();
    IFormControlT<char>* const list = book->getSheet(0)->formControlAt(0);
    ASSERT_NE(list, nullptr) << book->errorMessage();
    EXPECT_EQ(list->itemTotal(), 1);
    EXPECT_TRUE(list->addItem("z\xC3\xBCge"));
    EXPECT_TRUE(list->insertItem(0, "none"));
    EXPECT_STREQ(list->itemAt(2), "z\xC3\xBCge");
    EXPECT_TRUE(list->setVal(7));
    const std::string part = savedParts(*book).at("xl/ctrlProps/ctrlProp1.xml");
    for (const char* piece :
         {"objectType=\"List\"", "unknown=\"kept\"", "val=\"7\"",
          "<itemLst><item val=\"none\"/><item val=\"one\"/><item val=\"z\xC3\xBCge\"/></itemLst>"}) {
        EXPECT_NE(part.find(piece), std::string::npos) << piece << '\n' << part;
    }
    EXPECT_EQ(part.find("checked"), std::string::npos);  // a property that nobody set
    const struct {
        bool done;
    } wrong[] = {{list->removeItem(3)}, {list->insertItem(4, "x")}, {list->insertItem(-1, "x")}};
    for (const auto& w : wrong) EXPECT_FALSE(w.done);
    EXPECT_EQ(list->itemAt(3), nullptr);
    EXPECT_STREQ(book->errorMessage(), "index is out of range");
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(list->removeItem(0));
    EXPECT_FALSE(list->removeItem(0));
    EXPECT_EQ(savedParts(*book).at("xl/ctrlProps/ctrlProp1.xml").find("itemLst"), std::string::npos);
}

TEST(Shapes, EverythingButPicturesAndControls) {
    const std::string chart =
        "<xdr:graphicFrame><a:graphic><a:graphicData uri=\"c\"><c:chart xmlns:c=\"urn:c\"/></a:graphicData></a:graphic>"
        "</xdr:graphicFrame><xdr:clientData/>";
    const std::string ofControl = choice(
        twoCell("<xdr:sp><xdr:nvSpPr><a:ext><x:compatExt xmlns:x=\"urn:x\"/></a:ext></xdr:nvSpPr></xdr:sp>"), "");
    ObjectPackage package;
    package.addDrawing(choice(twoCell("<xdr:cxnSp/>", 7, 8), "") + twoCell(chart, 1, 2) + twoCell(pic()) + ofControl +
                       "<xdr:oneCellAnchor>" + marker("from", 3, 0, 4, 0) + extent(9525, 9525) +
                       "<xdr:grpSp><xdr:pic/></xdr:grpSp><xdr:clientData/></xdr:oneCellAnchor>" +
                       twoCell(choice("<xdr:sp/>", "") + "<xdr:clientData/>", 9, 9));
    const BookPtr book = package.book();
    std::string listed;
    for (const SheetShape& shape : objectsOf(*book->getSheet(0)).shapes()) {
        listed += shape.type + (shape.shapeClass == ShapeClass::chart ? "*" : "") + " " + std::to_string(shape.row) +
                  "," + std::to_string(shape.col) + ":" + std::to_string(shape.rowBottom) + "," +
                  std::to_string(shape.colRight) + "; ";
    }
    EXPECT_EQ(listed, "cxnSp 7,8:8,9; graphicFrame* 1,2:2,3; grpSp 4,3:4,3; sp 9,9:10,10; ");
}

}  // namespace
}  // namespace vellum::test
