// Parts that are bound so that they can be worked on in place: drawings, tables, comments, controls, themes.
#pragma once
#include "ooxml/ctrlProps.h"
#include "ooxml/dialect.h"
#include "ooxml/dml-main-strict.h"
#include "ooxml/dml-main.h"
#include "ooxml/dml-spreadsheetDrawing.h"
#include "ooxml/sml-comments.h"
#include "ooxml/sml-sheet.h"
#include "ooxml/sml.h"
#include "ooxml/strictDrawing.h"
#include "xlsx/xml_file.h"

namespace vellum {

template <class Tag>
class Drawing final : public XmlFile<typename ooxml::dialect<Tag>::c_wsDr> {
public:
    using XmlFile<typename ooxml::dialect<Tag>::c_wsDr>::XmlFile;
};

template <class Tag>
class Table final : public XmlFile<typename ooxml::dialect<Tag>::c_table> {
public:
    using XmlFile<typename ooxml::dialect<Tag>::c_table>::XmlFile;
};

template <class Tag>
class Comments final : public XmlFile<typename ooxml::dialect<Tag>::c_comments> {
public:
    using XmlFile<typename ooxml::dialect<Tag>::c_comments>::XmlFile;
};

class XMLControlPr final : public XmlFile<ctrlProps::c_formControlPr> {
public:
    using XmlFile<ctrlProps::c_formControlPr>::XmlFile;
};

}  // namespace vellum
