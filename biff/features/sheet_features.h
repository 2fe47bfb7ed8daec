// All that a worksheet holds beside its cells, as far as the engine knows its fields.
#pragma once
#include "biff/features/hyperlinks.h"
#include "biff/features/page_breaks.h"
#include "biff/features/page_setup.h"
#include "biff/features/panes.h"
#include "biff/features/protection.h"
#include "biff/features/shared_features.h"
#include "biff/features/tab_color.h"

namespace vellum::biff {

struct SheetFeatures {
    PageBreaks pageBreaks;
    PageSetup pageSetup{PageSetup::Origin::made};
    Protection protection;
    Panes panes{Panes::Origin::made};
    Hyperlinks hyperlinks;
    TabColor tabColor;
    SharedFeatures shared;

    /// Of a sheet that a file is about to fill.
    static SheetFeatures ofFile() {
        SheetFeatures features;
        features.pageSetup = PageSetup(PageSetup::Origin::loaded);
        features.panes = Panes(Panes::Origin::loaded);
        return features;
    }
    /// Hands a record to the feature that takes it; false when none does.
    bool read(RecordHeader header, Xls& in, bool biff5) {
        return pageBreaks.read(header, in, biff5) || pageSetup.read(header, in, biff5) || protection.read(header, in) ||
               panes.read(header, in) || hyperlinks.read(header, in) || tabColor.read(header, in) ||
               shared.read(header, in);
    }
};

}  // namespace vellum::biff
