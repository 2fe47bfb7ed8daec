#include <gtest/gtest.h>

#include <random>

#include "bindery/classes/extras.h"
#include "tests/ooxml/cells/sheet_text.h"

namespace ooxml {
namespace {

using Cell = sheet::c_CT_Cell;

std::string row(std::string_view cells) {
    return "<row r=\"1\">" + std::string(cells) + "</row>";
}

}  // namespace

TEST(Cells, ComeBackAsTheyWere) {
    const std::string cells[] = {
        "<c r=\"A1\"/>",
        "<c r=\"XFD1\" s=\"4294967295\"/>",
        "<c><v>1</v></c>",
        "<c r=\"B1\" s=\"12\" t=\"s\"><v>7</v></c>",
        "<c r=\"A1\" t=\"str\"><v>a &lt; b &amp; c</v></c>",
        "<c r=\"A1\" t=\"b\"><v/></c>",
        "<c r=\"A1\" t=\"e\"><v>#DIV/0!</v></c>",
        "<c r=\"A1\" t=\"n\"><v>0.12345678901234567</v></c>",
        "<c r=\"A1\" t=\"str\"><v>exactly twenty bytes</v></c>",
        "<c r=\"A1\" t=\"str\"><v>twenty-one bytes here</v></c>",
        "<c r=\"A1\" t=\"str\"><v>\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80</v></c>",
        "<c r=\"A1\" t=\"str\"><v xml:space=\"preserve\"> a </v></c>",
        "<c r=\"A1\" t=\"inlineStr\"><is><t xml:space=\"preserve\"> in </t></is></c>",
        "<c r=\"A1\" t=\"str\"><f>A2&amp;&quot;x&quot;</f><v>x</v></c>",
        "<c r=\"A1\"><f t=\"shared\" ref=\"A1:A3\" si=\"0\">B1*2</f><v>4</v></c>",
        "<c r=\"A1\"><f t=\"shared\" si=\"70000\"/><v>-1.2345678901234567e-308</v></c>",
        "<c r=\"A1\" t=\"str\"><f t=\"shared\" si=\"0\"/><v>eleven byte</v></c>",
        "<c r=\"A1\" t=\"str\"><f t=\"shared\" si=\"0\"/><v>twelve bytes</v></c>",
        "<c r=\"A1\"><f t=\"shared\" si=\"4294967295\"/></c>",
        "<c r=\"A1\" s=\"4294967295\"><f t=\"shared\" si=\"1\"/><v>1</v></c>",
        "<c r=\"A1\" s=\"524288\"><f>A2</f><v>1</v></c>",
        "<c r=\"A1\"><f aca=\"false\">SUM(A2:A9)</f><v>1</v></c>",
        "<c r=\"A1\"><f aca=\"true\">A2</f><v>1</v></c>",
        "<c r=\"A1\"><f ca=\"true\">NOW()</f><v/></c>",
        "<c r=\"A1\"><f t=\"normal\">A2</f></c>",
        "<c r=\"A1\"><f si=\"3\">A2</f></c>",
        "<c r=\"A1\"><f t=\"shared\" si=\"3\">A2</f></c>",
        "<c r=\"A1\"><f aca=\"false\"/><v>1</v></c>",
        "<c r=\"A1\"><f x14ac:n=\"1\">A2</f></c>",
        "<c r=\"A1\"><f/><v>1</v></c>",
        "<c r=\"A1\"><f>\xC3\xA4\xE2\x82\xAC&amp;\xF0\x9F\x98\x80</f><v>1</v></c>",
        "<c r=\"A1\" cm=\"1\" vm=\"2\" ph=\"true\"><f t=\"array\" ref=\"A1\">X()</f><v>1</v></c>",
        "<c r=\"A1\" x14ac:unknown=\"1\"><v>1</v></c>",
        "<c r=\"A1\"><mc:AlternateContent><mc:Choice Requires=\"x14ac\"/></mc:AlternateContent><f>1</f><n/><v>1</v>"
        "<extLst><ext uri=\"{1}\"/></extLst></c>",
        "<c r=\"A1\" t=\"inlineStr\"><v>1</v><n/><is><t>in</t></is></c>",
    };
    for (const std::string& cell : cells) {
        EXPECT_EQ(through(sheetText(row(cell))), row(cell));
        // In the middle of others, where the fast path has all the room that it wants.
        std::string many = cell;
        for (int i = 0; i < 9; ++i) many += "<c r=\"K1\" s=\"1\"><v>123</v></c>";
        EXPECT_EQ(through(sheetText(row(many))), row(many));
    }
}

TEST(Cells, EachFormOfWriting) {
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"<c r='A1' s='1' t='s'><v>1</v></c>", "<c r=\"A1\" s=\"1\" t=\"s\"><v>1</v></c>"},
        {"<c t=\"s\" s=\"1\" r=\"A1\"><v>1</v></c>", "<c r=\"A1\" s=\"1\" t=\"s\"><v>1</v></c>"},
        {"<c  r=\"A1\" ><v >1</v ></c >", "<c r=\"A1\"><v>1</v></c>"},
        {"<c r=\"A1\"></c>", "<c r=\"A1\"/>"},
        {"<c r=\"A1\"><v></v></c>", "<c r=\"A1\"><v/></c>"},
        {"<c r=\"A1\"><v><![CDATA[1]]><!-- 2 -->3</v></c>", "<c r=\"A1\"><v>13</v></c>"},
        {"<c r=\"A1\"><v>1</v><f>2</f></c>", "<c r=\"A1\"><f>2</f><v>1</v></c>"},
        {"<c r=\"A1\"><v>1</v><v>2</v></c>", "<c r=\"A1\"><v>2</v></c>"},
        {"<c r=\"A1\"><is><t>1</t></is><is><t>2</t></is></c>", "<c r=\"A1\"><is><t>2</t></is></c>"},
        {"<c r=\" A1 \" s=\" 1\"/>", "<c r=\"A1\" s=\"1\"/>"},
        {"<c r='A1' t='str'><v> </v></c>", "<c r=\"A1\" t=\"str\"><v> </v></c>"},
        {"<c r=\"A1\" t=\"str\"><v>1\r\n2</v></c>", "<c r=\"A1\" t=\"str\"><v>1\n2</v></c>"},
        {"<c r=\"A1\" t=\"str\"><v>\xE9</v></c>", "<c r=\"A1\" t=\"str\"><v>\xEF\xBF\xBD</v></c>"},
    };
    for (const auto& c : cases) EXPECT_EQ(through(sheetText(row(c.in))), row(c.out)) << c.in;
}

TEST(Cells, ABlankIsANoBreakSpaceUnlessItWasRead) {
    const std::string text =
        sheetText(row("<c r=\"A1\"><v> </v></c><c r=\"B1\"><v>1</v></c><c r=\"C1\"><v> </v></c>"
                      "<c r=\"D1\" t=\"str\"><f>E1</f><v> </v></c>"));
    sheet::c_worksheet root;
    Reader reader(text);
    ASSERT_EQ(root.unmarshal(reader), 0);
    auto& cells = root.sheetData().row()[0].c();
    cells[1].setText(" ");
    cells[2].clearContent();
    cells[2].setText(" ");
    cells[3].setText(" ");  // beside its formula
    bindery::c_keeping_writer writer;
    ASSERT_EQ(root.marshal(writer), 0);
    EXPECT_NE(writer.buffer().find("<v> </v></c><c r=\"B1\"><v>&#160;</v></c><c r=\"C1\"><v>&#160;</v></c>"
                                   "<c r=\"D1\" t=\"str\"><f>E1</f><v>&#160;</v></c>"),
              std::string::npos);
}

TEST(Cells, ValuesThatAreRefused) {
    const struct {
        const char* cell;
        const char* result;
    } cases[] = {
        {"<c r=\"A1\" t=\"x\"/>", "!38 @t"},
        {"<c r=\"A1\" t=\"d\"/>", "!38 @t"},
        {"<c r=\"A0\"/>", "!35 @r"},
        {"<c r=\"XFE1\"/>", "!35 @r"},
        {"<c r=\"A1048577\"/>", "!35 @r"},
        {"<c r=\"\"/>", "!35 @r"},
        {"<c r=\"A1B\"/>", "!35 @r"},
        {"<c r=\"A1\" s=\"\"/>", "!35 @s"},
        {"<c r=\"A1\" s=\"4294967296\"/>", "!35 @s"},
        {"<c r=\"A1\" r=\"A1\"/>", "!3 @r"},
        {"<c r=\"A1\" s=\"1\" s=\"1\"/>", "!3 @s"},
        {"<c r=\"A1\"><v>1</c>", "!23 v"},
        {"<c r=\"A1\"><v>1</v></d>", "!23 c"},
    };
    std::string room;
    for (int i = 0; i < 9; ++i) room += "<c r=\"K1\"><v>123</v></c>";
    for (const auto& c : cases) {
        EXPECT_EQ(through(sheetText(row(c.cell))), c.result) << c.cell;
        EXPECT_EQ(through(sheetText(row(c.cell + room))), c.result) << c.cell;  // room for the fast path
    }
    EXPECT_EQ(through<strict::c_worksheet>(strictText(row("<c r=\"A1\" t=\"d\"><v>2020-01-31</v></c>"))),
              row("<c r=\"A1\" t=\"d\"><v>2020-01-31</v></c>"));
}

/// The fast path against the general one: the same random sheet, and the same with blanks and prefixes that only the
/// general path takes.
TEST(Cells, FastPathAgreesWithTheGeneralOne) {
    std::mt19937 random(1);
    const char* values[] = {"1",        "-0.5",      "1E+20",  "123456789012345678901234567890",
                            "text",     "a &amp; b", "]]&gt;", "",
                            "\xC3\xA4", "#N/A",      " ",      "  x  "};
    const char* types[] = {"", "", "", " t=\"s\"", " t=\"str\"", " t=\"b\"", " t=\"n\"", " t=\"inlineStr\""};
    for (int round = 0; round < 50; ++round) {
        std::string rows;
        for (int r = 1; r <= 20; ++r) {
            const std::string number = std::to_string(r);
            rows += "<row r=\"" + number + "\"";
            if (random() % 2)
                rows += " spans=\"1:8\" ht=\"" + std::to_string(random() % 100) + ".5\" customHeight=\"1\"";
            if (random() % 3 == 0) rows += " x14ac:dyDescent=\"0.25\"";
            rows += random() % 8 ? ">" : " hidden=\"1\">";
            for (unsigned c = 0; c < random() % 8; ++c) {
                rows += "<c";
                if (random() % 8) rows += " r=\"" + std::string(1, static_cast<char>('A' + c)) + number + "\"";
                if (random() % 2) rows += " s=\"" + std::to_string(random() % 1000) + "\"";
                rows += types[random() % std::size(types)];
                if (random() % 16 == 0) rows += " cm=\"1\"";
                switch (random() % 9) {
                    case 0:
                        rows += "/>";
                        break;
                    case 1:
                        rows += "></c>";
                        break;
                    case 2:
                        rows += "><f>A1+1</f><v>2</v></c>";
                        break;
                    case 3:
                        rows += "><f t=\"shared\" si=\"12\"/><v>";
                        rows += values[random() % std::size(values)];
                        rows += "</v></c>";
                        break;
                    case 4:
                        rows += "><f aca=\"false\">A1&amp;\"x\"</f></c>";
                        break;
                    default:
                        rows += "><v>";
                        rows += values[random() % std::size(values)];
                        rows += "</v></c>";
                }
            }
            rows += "</row>";
        }
        const std::string fast = through(sheetText(rows));
        ASSERT_NE(fast[0], '!') << fast;
        const std::string blanks =
            replaced(replaced(replaced(rows, "<c", "<!--x--><c"), "<row ", "<row  "), "</row>", "</row >");
        EXPECT_EQ(through(sheetText(blanks)), fast);
        const std::string prefixed = replaced(replaced(sheetText(rows), "<", "<x:"), "<x:/", "</x:");
        EXPECT_EQ(through(replaced(prefixed, "worksheet xmlns=", "worksheet xmlns:x=")), fast);
    }
}

TEST(Cells, TextsOfAnyLength) {
    Cell cell;
    for (const std::size_t length : {0u, 1u, 15u, 20u, 21u, 1000u, 20u, 0u}) {
        const std::string text(length, 'x');
        cell.setText(text);
        EXPECT_TRUE(cell.hasValue());
        EXPECT_EQ(cell.text(), text);
        Cell copy = cell;
        const Cell moved = std::move(copy);
        cell = Cell(moved);
        EXPECT_EQ(cell.text(), text);
        if (length > 2) {
            cell.setText(cell.text().substr(1));  // its own text
            EXPECT_EQ(cell.text(), text.substr(1));
        }
    }
    cell.setValue(L"\x20AC");
    EXPECT_EQ(cell.text(), "\xE2\x82\xAC");
    EXPECT_EQ(cell.value(), L"\x20AC");
    cell.clearValue();
    EXPECT_FALSE(cell.hasValue());
    EXPECT_EQ(cell.text(), "");
}

/// Every form that a text may have in a cell, with a rest beside it and without.
TEST(Cells, TextsOfAnyForm) {
    const std::string texts[] = {"",
                                 "1",
                                 "-1.5E+10",
                                 "0.1234567890123",                  // 15 bytes
                                 "0.12345678901234",                 // 16
                                 "-1.2345678901234567e-308",         // packed
                                 "123456789012345678901234567890",   // as long as packed ones get
                                 "1234567890123456789012345678901",  // longer
                                 "-.+Ee0987654321-.+Ee",
                                 "12345678901234567x",
                                 "fifteen letters",
                                 "sixteen letters!"};
    for (const std::string& text : texts) {
        for (const std::string& other : texts) {
            Cell cell;
            cell.setReference(77, 7);
            cell.setStyle(524287);  // with a rest of its own
            cell.setText(text);
            EXPECT_EQ(cell.text(), text);
            EXPECT_EQ(cell.hasText(), !text.empty());
            cell.clearContent();
            cell.setText(text);
            cell.makeFormula().text(L"A1");
            EXPECT_EQ(cell.text(), text);
            Cell copy = cell;
            copy.setText(other);
            copy.setText(copy.text());
            EXPECT_EQ(copy.text(), other);
            const Cell plain = [&] {
                Cell made;
                made.setText(text);
                made.setText(other);
                return made;
            }();
            cell = plain;
            EXPECT_EQ(cell.text(), other);
            EXPECT_FALSE(cell.hasFormula());
            cell = std::move(copy);
            EXPECT_EQ(cell.text(), other);
            EXPECT_TRUE(cell.hasFormula());
            EXPECT_EQ(cell.style(), 524287u);
            EXPECT_EQ(cell.row(), 77u);
            EXPECT_EQ(cell.column(), 7u);
            cell.clearValue();
            EXPECT_FALSE(cell.hasValue());
            EXPECT_EQ(cell.text(), "");
        }
    }
}

/// Formulas in the room that each needs, beside values that change.
TEST(Cells, FormulasBesideValues) {
    const std::string formulas[] = {"<f>A2</f>",
                                    "<f>IF(A2=1,&quot;\xC3\xA4&quot;,&quot;none of them&quot;)</f>",
                                    "<f/>",
                                    "<f t=\"shared\" si=\"70000\"/>",
                                    "<f aca=\"false\">A2</f>",
                                    "<f t=\"shared\" ref=\"A1:A3\" si=\"0\">B1*2</f>"};
    const std::string values[] = {
        "", "1", "-1.2345678901234567e-308", "eleven byte", "twelve bytes", std::string(99, 'x')};
    for (const std::string& formula : formulas) {
        const std::string text = "<c r=\"A1\" s=\"3\">" + formula + "</c>";
        sheet::c_worksheet root;
        const std::string document = sheetText(row(text));
        Reader reader(document);
        ASSERT_EQ(root.unmarshal(reader), 0);
        Cell& cell = root.sheetData().row()[0].c()[0];
        const auto written = [&] {
            bindery::c_keeping_writer writer;
            EXPECT_EQ(root.marshal(writer), 0);
            return writer.buffer();
        };
        for (const std::string& value : values) {
            for (const std::string& other : values) {
                cell.setText(value);
                EXPECT_EQ(cell.text(), value);
                Cell copy = cell;
                copy.setText(other);
                copy.setText(copy.text());
                EXPECT_EQ(copy.text(), other);
                EXPECT_EQ(copy.formula()->text(), cell.formula()->text());
                EXPECT_EQ(copy.formula()->si(), cell.formula()->si());
                copy.clearFormula();
                EXPECT_FALSE(copy.hasFormula());
                EXPECT_EQ(copy.text(), other);
                EXPECT_NE(written().find(value.empty() ? formula + "<v/></c>" : formula + "<v>" + value + "</v></c>"),
                          std::string::npos)
                    << written();
                copy = cell;
                EXPECT_EQ(&copy.makeFormula(), &copy.makeFormula());
                cell = std::move(copy);  // with the whole element
                EXPECT_NE(written().find(formula), std::string::npos) << written();
                EXPECT_EQ(cell.text(), value);
                EXPECT_EQ(cell.style(), 3u);
            }
            cell.clearValue();
            EXPECT_FALSE(cell.hasValue());
            EXPECT_NE(written().find(text), std::string::npos) << written();
        }
    }
    for (const std::wstring text : {L"", L" ", L"A1", L"\xE4", L"\xD800", L"\xD83D\xDE00", L"]]>"}) {
        for (const bool isRare : {false, true}) {
            Cell cell;
            if (isRare) cell.makeFormula().ref("A1");
            cell.setText("7");
            cell.setFormula(text);
            EXPECT_EQ(cell.formula()->text(), text);
            EXPECT_FALSE(cell.formula()->isset_ref());
            EXPECT_EQ(cell.text(), "7");
        }
    }
}

TEST(Cells, StylesOfAnySize) {
    for (const std::uint32_t style : {0u, 1u, 524286u, 524287u, 4294967295u}) {
        Cell cell;
        EXPECT_FALSE(cell.hasStyle());
        cell.setText("7");
        cell.setStyle(style);
        EXPECT_TRUE(cell.hasStyle());
        EXPECT_EQ(cell.style(), style);
        EXPECT_EQ(cell.text(), "7");
        cell.clearContent();
        EXPECT_EQ(cell.style(), style);
        cell.clearStyle();
        EXPECT_FALSE(cell.hasStyle());
        EXPECT_EQ(cell.style(), 0u);
    }
}

TEST(Cells, PlaceStyleAndTypeDoNotDisturbEachOther) {
    Cell cell;
    EXPECT_FALSE(cell.hasReference());
    cell.setReference(1048575, 16383);
    cell.setStyle(7);
    cell.setType(CellType::inlineStr);
    EXPECT_EQ(cell.row(), 1048575u);
    EXPECT_EQ(cell.column(), 16383u);
    EXPECT_EQ(cell.style(), 7u);
    EXPECT_EQ(cell.type(), CellType::inlineStr);
    cell.clearStyle();
    cell.setType(CellType::absent);
    EXPECT_EQ(cell.row(), 1048575u);
    EXPECT_FALSE(cell.hasStyle());
    cell.setReference(0, 0);
    EXPECT_EQ(cell.row(), 0u);
    EXPECT_TRUE(cell.hasReference());
}

TEST(Cells, ClearContentKeepsPlaceAndStyle) {
    Cell cell;
    cell.setReference(2, 3);
    cell.setStyle(5);
    cell.setType(CellType::s);
    cell.setText("1");
    cell.makeFormula().text(L"A1");
    cell.makeInlineString();
    cell.setMetadata(1, 2);
    Cell copy = cell;
    cell.clearContent();
    EXPECT_FALSE(cell.hasFormula());
    EXPECT_EQ(cell.inlineString(), nullptr);
    EXPECT_FALSE(cell.hasValue());
    EXPECT_EQ(cell.type(), CellType::absent);
    EXPECT_EQ(cell.cellMetadata(), 0u);
    EXPECT_EQ(cell.style(), 5u);
    EXPECT_EQ(cell.column(), 3u);
    EXPECT_EQ(copy.formula()->text(), L"A1");  // a copy has its own
    EXPECT_EQ(copy.valueMetadata(), 2u);
    cell.setMetadata(0, 2);
    EXPECT_EQ(cell.cellMetadata(), 0u);
    EXPECT_EQ(cell.valueMetadata(), 2u);
}

}  // namespace ooxml
