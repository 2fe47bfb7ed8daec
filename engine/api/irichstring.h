// The interface of rich strings.
#pragma once
namespace vellum {

template <class CharT>
class IFontT;

/// A text of runs, each with its font; owned by the book.
template <class CharT>
class IRichStringT {
public:
    virtual IFontT<CharT>* addFont(IFontT<CharT>* source = nullptr) = 0;
    /// The font may be null, where the format allows a run without one.
    virtual bool addRun(const CharT* text, IFontT<CharT>* font) = 0;
    virtual const CharT* runAt(int index, IFontT<CharT>** font) = 0;
    virtual int runTotal() = 0;

    virtual ~IRichStringT() = default;
};

}  // namespace vellum
