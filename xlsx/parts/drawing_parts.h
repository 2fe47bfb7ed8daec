// Parts that are bound so that they can be worked on in place: drawings, tables, comments, controls, themes.
#pragma once
#include "ooxml/generated/ctrlProps/ctrlProps.h"
#include "ooxml/generated/dialect.h"
#include "ooxml/generated/dml-main-strict/dml-main-strict.h"
#include "ooxml/generated/dml-main/dml-main.h"
#include "ooxml/generated/dml-spreadsheetDrawing/dml-spreadsheetDrawing.h"
#include "ooxml/generated/sml-comments/sml-comments.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "ooxml/generated/strictDrawing/strictDrawing.h"
#include "xlsx/package/xml_file.h"

namespace vellum {

template <class Tag>
class Table final : public XmlFile<typename ooxml::dialect<Tag>::c_table> {
public:
    using XmlFile<typename ooxml::dialect<Tag>::c_table>::XmlFile;
};

}  // namespace vellum
