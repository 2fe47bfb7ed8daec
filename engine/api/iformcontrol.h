// The interface of form controls.
#pragma once
namespace vellum {

/// The properties of a form control of an Open XML sheet; owned by the book. A getter of an absent
/// property gives the default of the schema, a null text where there is none; a setter makes it.
/// `objectType` is "Button", "CheckBox", "Dialog", "Drop", "EditBox", "GBox", "Label", "List", "Radio",
/// "Scroll" or "Spin", `checked` "Checked", "Mixed" or "Unchecked"; other texts are refused.
template <class CharT>
class IFormControlT {
public:
    virtual const CharT* objectType() = 0;
    virtual bool setObjectType(const CharT* value) = 0;
    virtual const CharT* checked() = 0;
    virtual bool setChecked(const CharT* value) = 0;
    virtual bool colored() = 0;
    virtual bool setColored(bool value) = 0;
    virtual int dropLines() = 0;
    virtual bool setDropLines(int value) = 0;
    virtual const CharT* dropStyle() = 0;
    virtual bool setDropStyle(const CharT* value) = 0;
    virtual int dx() = 0;
    virtual bool setDx(int value) = 0;
    virtual const CharT* editVal() = 0;
    virtual bool setEditVal(const CharT* value) = 0;
    virtual bool firstButton() = 0;
    virtual bool setFirstButton(bool value) = 0;
    virtual const CharT* fmlaGroup() = 0;
    virtual bool setFmlaGroup(const CharT* value) = 0;
    virtual const CharT* fmlaLink() = 0;
    virtual bool setFmlaLink(const CharT* value) = 0;
    virtual const CharT* fmlaRange() = 0;
    virtual bool setFmlaRange(const CharT* value) = 0;
    virtual const CharT* fmlaTxbx() = 0;
    virtual bool setFmlaTxbx(const CharT* value) = 0;
    virtual bool horiz() = 0;
    virtual bool setHoriz(bool value) = 0;
    virtual int inc() = 0;
    virtual bool setInc(int value) = 0;
    virtual bool justLastX() = 0;
    virtual bool setJustLastX(bool value) = 0;
    virtual bool lockText() = 0;
    virtual bool setLockText(bool value) = 0;
    virtual int max() = 0;
    virtual bool setMax(int value) = 0;
    virtual int min() = 0;
    virtual bool setMin(int value) = 0;
    virtual bool multiLine() = 0;
    virtual bool setMultiLine(bool value) = 0;
    virtual const CharT* multiSel() = 0;
    virtual bool setMultiSel(const CharT* value) = 0;
    virtual bool noThreeD() = 0;
    virtual bool setNoThreeD(bool value) = 0;
    virtual bool noThreeD2() = 0;
    virtual bool setNoThreeD2(bool value) = 0;
    virtual int page() = 0;
    virtual bool setPage(int value) = 0;
    virtual bool passwordEdit() = 0;
    virtual bool setPasswordEdit(bool value) = 0;
    virtual int sel() = 0;
    virtual bool setSel(int value) = 0;
    virtual const CharT* seltype() = 0;
    virtual bool setSeltype(const CharT* value) = 0;
    virtual const CharT* textHAlign() = 0;
    virtual bool setTextHAlign(const CharT* value) = 0;
    virtual const CharT* textVAlign() = 0;
    virtual bool setTextVAlign(const CharT* value) = 0;
    virtual int val() = 0;
    virtual bool setVal(int value) = 0;
    virtual bool verticalBar() = 0;
    virtual bool setVerticalBar(bool value) = 0;
    virtual int widthMin() = 0;
    virtual bool setWidthMin(int value) = 0;

    /// The own entries of a list or drop-down that has no `fmlaRange`.
    virtual int itemTotal() = 0;
    virtual const CharT* itemAt(int index) = 0;
    virtual bool addItem(const CharT* text) = 0;
    virtual bool insertItem(int index, const CharT* text) = 0;
    virtual bool removeItem(int index) = 0;
    virtual bool clearItems() = 0;

    virtual ~IFormControlT() = default;
};

}  // namespace vellum
