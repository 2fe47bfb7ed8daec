#include "refhost/operations/statement.h"

#include <stdexcept>
#include <utility>

namespace refhost {

TypeWords::TypeWords(const TypeRegistry& types, std::span<const HostType> items)
    : _types(types), _words(items.begin(), items.end()) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        const HostType word = withFields(items[i]);
        _words[i] = word;
    }
}

HostType TypeWords::withFields(HostType word) {
    const HostType type = word & hostTypeMask;
    const TypeInfo* info = _types.find(type);
    if (!info || info->classWord != hostClassRecord) return word;
    auto known = _places.find(type);
    if (known == _places.end()) {
        std::vector<HostType> fields;
        for (std::size_t i = 0; i < info->fields.size(); ++i)  // nested lists come to stand before this one
            fields.push_back(withFields(info->fields[i].type) | static_cast<HostType>(i << hostFieldIndexShift));
        const std::size_t place = _words.size();
        if (place >= std::size_t{1} << (32 - hostFieldTableShift))
            throw std::length_error("too many items and record fields in one statement");
        _words.push_back(static_cast<HostType>(fields.size()));
        _words.insert(_words.end(), fields.begin(), fields.end());
        known = _places.emplace(type, place).first;
    }
    return word | static_cast<HostType>(known->second << hostFieldTableShift);
}

SourceName splitSource(const Module& module, std::string_view source) {
    const std::size_t colon = source.find(':');
    if (colon == source.npos) return {nullptr, "", std::string(source)};
    const std::string prefix(source.substr(0, colon));
    return {module.driver(prefix), prefix, std::string(source.substr(colon + 1))};
}

void* openSource(Context& context, const Driver& driver, const std::string& name, bool update) {
    context.workbookToChange.clear();
    std::uint32_t flags = update ? hostOpenUpdate : 0;
    return driver.open(context.handle(), &flags, name.c_str());
}

TransferResult transfer(Context& context, const Driver& driver, const std::string& name, Direction direction,
                        std::span<const TransferItem> items) {
    const bool writing = direction == Direction::write;
    TransferResult result;
    if (!writing) result.counts.resize(items.size());

    std::vector<const char*> labels;
    std::vector<HostType> itemWords;
    std::vector<HostValue> slots;
    for (const TransferItem& item : items) {
        labels.push_back(item.label ? item.label->c_str() : nullptr);
        itemWords.push_back(item.variable->word());
        slots.push_back(item.variable->slot());
    }
    const TypeWords words(context.host.types, itemWords);

    void* source = openSource(context, driver, name, writing);
    if (!source) return result;
    const std::string changed = std::exchange(context.workbookToChange, {});
    const int count = static_cast<int>(items.size());
    if (writing)
        result.status =
            driver.write(context.handle(), source, count, labels.data(), words.words().data(), slots.data());
    else
        result.status = driver.read(context.handle(), source, count, labels.data(), words.words().data(), slots.data(),
                                    result.counts.data());
    result.close = driver.close(context.handle(), source);
    result.fresh = result.close != 0 || refresh(context, changed);
    return result;
}

bool refresh(Context& context, const std::string& workbook) {
    if (workbook.empty() || !context.host.afterSave) return true;
    std::string why;
    context.fresh = context.host.afterSave(workbook, why);
    if (!context.fresh) context.ownReports.push_back("'" + workbook + "' keeps old results: " + why);
    return context.fresh.has_value();
}

}  // namespace refhost
