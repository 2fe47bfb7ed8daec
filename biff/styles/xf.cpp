#include "biff/styles/xf.h"
#include "biff/container/record_codec.h"

namespace vellum {

void Xf::setNumFormat(int value) {
    ifmt = static_cast<std::uint16_t>(value);
    usesNumber.set(alignment, 1);
}

void Xf::setFont(std::uint16_t wireIndex) {
    ifnt = wireIndex;
    usesFont.set(alignment, 1);
}

void Xf::setAlignment(Bits field, int value) {
    field.set(alignment, value);
    usesAlignment.set(alignment, 1);
}

void Xf::setBorder(std::uint32_t Xf::*word, Bits field, int value) {
    field.set(this->*word, value);
    usesBorder.set(alignment, 1);
}

void Xf::setFillPattern(int value) {
    fillPattern.set(colors, value);
    usesPattern.set(alignment, 1);
}

void Xf::setPatternColor(Bits field, int value) {
    field.set(pattern, value);
    usesPattern.set(alignment, 1);
}

void Xf::setProtection(Bits field, int value) {
    field.set(protection, value);
    usesProtection.set(alignment, 1);
}

Xf readXf(Cursor& in, std::uint16_t size) {
    return readPrefix<Xf>(in, size);
}

namespace {

/// The body as older files have it.
struct XfBiff5 {
    static constexpr const char* name = "XF";
    std::uint16_t ifnt = 0, ifmt = 0, protection = 0;
    std::uint8_t alignment = 0, rotation = 0;
    std::uint32_t pattern = 0, border = 0;

    template <class Self, class Visit>
    static constexpr void fields(Self& r, Visit&& visit) {
        visit("ifnt", r.ifnt);
        visit("ifmt", r.ifmt);
        visit("protection", r.protection);
        visit("alignment", r.alignment);
        visit("rotation", r.rotation);
        visit("pattern", r.pattern);
        visit("border", r.border);
    }
};

}  // namespace

Xf readXfBiff5(Cursor& in, std::uint16_t size) {
    const auto old = readPrefix<XfBiff5>(in, size);
    Xf xf;
    xf.ifnt = old.ifnt;
    xf.ifmt = old.ifmt;
    xf.protection = old.protection;

    xf.setAlignment(Xf::horizontal, Bits{0, 3}.get(old.alignment));
    xf.setAlignment(Xf::wrap, Bits{3, 1}.get(old.alignment));
    xf.setAlignment(Xf::vertical, Bits{4, 3}.get(old.alignment));
    constexpr int rotations[] = {0, 255, 90, 180};  // none, letters one below the other, up, down
    xf.setAlignment(Xf::rotation, rotations[Bits{0, 2}.get(old.rotation)]);

    xf.setPatternColor(Xf::foreColor, Bits{0, 7}.get(old.pattern));
    xf.setPatternColor(Xf::backColor, Bits{7, 7}.get(old.pattern));
    xf.setFillPattern(Bits{16, 6}.get(old.pattern));
    xf.setBorder(&Xf::border, Xf::bottom, Bits{22, 3}.get(old.pattern));
    xf.setBorder(&Xf::colors, Xf::bottomColor, Bits{25, 7}.get(old.pattern));

    xf.setBorder(&Xf::border, Xf::top, Bits{0, 3}.get(old.border));
    xf.setBorder(&Xf::border, Xf::left, Bits{3, 3}.get(old.border));
    xf.setBorder(&Xf::border, Xf::right, Bits{6, 3}.get(old.border));
    xf.setBorder(&Xf::colors, Xf::topColor, Bits{9, 7}.get(old.border));
    xf.setBorder(&Xf::border, Xf::leftColor, Bits{16, 7}.get(old.border));
    xf.setBorder(&Xf::border, Xf::rightColor, Bits{23, 7}.get(old.border));
    return xf;
}

}  // namespace vellum
