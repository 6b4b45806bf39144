#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace host::demo {

/// A sequence of numbers that is the same on every machine (splitmix64, public domain, Sebastiano Vigna).
class Sequence {
public:
    explicit Sequence(std::uint64_t seed) : state_(seed) {}
    std::uint64_t next();
    /// [0, bound)
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() % bound); }
    bool oneIn(std::size_t count) { return below(count) == 0; }

private:
    std::uint64_t state_;
};

/// An Italian town with what hangs from it.
struct Place {
    std::string_view town, province, prefix, area, zone, region;
};
constexpr std::size_t placeCount = 24;
const std::array<Place, placeCount>& places();

struct MacroArea {
    std::string_view code, description;
};
const std::array<MacroArea, 4>& macroAreas();
/// The region of a place: "NO", ...
struct Region {
    std::string_view code, description, macroArea;
};
constexpr std::size_t regionCount = 12;
const std::array<Region, regionCount>& regions();
const Region& regionOf(const Place& place);

/// A line of business, with its classification.
struct Trade {
    std::string_view name, macroCategory, category, subCategory;
};
constexpr std::size_t tradeCount = 12;
const std::array<Trade, tradeCount>& customerTrades();
const std::array<Trade, tradeCount>& supplierTrades();

struct Described {
    std::string_view code, description;
};
const std::array<Described, 3>& macroCategories();
const std::array<Described, 7>& categories();
const std::array<Described, 5>& payments();
const std::array<Described, 5>& workflowStates(); ///< codes are numbers

struct Bank {
    std::int64_t abi;
    std::string_view name;
};
const std::array<Bank, 6>& banks();

std::string personName(Sequence& sequence);
/// A company's name in that trade.
std::string companyName(Sequence& sequence, const Trade& trade);
std::string address(Sequence& sequence);
std::string phone(Sequence& sequence, const Place& place);
std::string guid(Sequence& sequence);

/// A name of exactly 80 characters.
std::string longestName();

} // namespace host::demo
