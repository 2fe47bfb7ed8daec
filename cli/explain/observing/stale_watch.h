// The observer of a run that tells of results which are older than what the script wrote.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "cli/explain/stale/stale_cells.h"
#include "host/interface/observer.h"
#include "refhost/report/reporter.h"

namespace cli::explain {

class StaleWatch final : public quillet::Observer {
public:
    /// What the statement that is over read, and forgets it.
    std::optional<refhost::StaleResults> take();

    void itemBegins(int, const quillet::DriverContext& source, const char*, quillet::ItemUse) override;
    void cellRead(const quillet::RangeSpec& range, quillet::CellPart, HostType, const HostValue*, int, int row,
                  int col) override {
        look(range, row, col);
    }
    void cellPassedOver(const quillet::RangeSpec& range, int row, int col) override { look(range, row, col); }
    void cellWritten(const quillet::RangeSpec& range, int row, int col, bool done) override;

    void sourceOpened(const quillet::DriverContext&, const char*) override {}
    bool keepsFiles() const override { return false; }
    std::optional<std::span<const char>> heldFile(const char*) override { return std::nullopt; }
    bool keepFile(const char*, std::span<const char>) override { return false; }
    void itemOpened(const quillet::Item&, const quillet::DriverContext&) override {}
    void itemDone(const quillet::Item&) override {}
    void laidOut(quillet::Layout, int) override {}
    void headerSought(const quillet::RangeSpec&, std::string_view, int) override {}
    void cellToBeRead(const quillet::RangeSpec&, int, int) override {}
    void rowPassedOver(const quillet::RangeSpec&, int) override {}
    void rowIndexed(const quillet::RangeSpec&, int, const int*, int) override {}
    void cellToBeWritten(const quillet::RangeSpec&, quillet::CellPart, int, int) override {}
    void rowsFitted(long long, int) override {}
    void rowsLeft(int) override {}

private:
    void look(const quillet::RangeSpec& range, int row, int col);

    StaleCells _cells;
    refhost::StaleResults _seen;
};

}  // namespace cli::explain
