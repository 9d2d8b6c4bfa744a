#ifndef TARVO_UTILITY_SMARTENUMERATOR_H
#define TARVO_UTILITY_SMARTENUMERATOR_H

#include <tarvo/utility/EnumeratorInterface.h>

#include <string>
#include <vector>

namespace Tarvo::Utility {

// The compiled enumerations of the kernel. A value is its position in the enumeration's table,
// counted from 1; 0 is the null value of every enumeration.
enum class ScalingMode { null, noscaling, linear, power, arctangent, arctangentExclusive, arctangentpower, rational, log };
enum class CutsSolution { null, direct, newton, wegstein };
enum class MassBalanceMode { null, Nx, Mx, Nw, Mw, N, M };
enum class FlashMode { null, PT, PA, PH, RH, RT, PS, SA };
enum class Direction { null, up, down, left, right };
enum class PhaseType { null, vapor, liquid, solid };
enum class PhaseIndex { null, vapor, liquid1, liquid2, liquid3, solid1, solid2, solid3, solid4, solid5, solid6, solid7, solid8, solid9 };
enum class Category { null, phase, stream, unit, flowsheet, option };

// Name, description and items of one compiled enumeration.
struct SmartEnumeratorTable {
    std::string name;
    std::string description;
    std::vector<EnumeratorItem> items;
};

template <typename T> const SmartEnumeratorTable& smartEnumeratorTable();

// The interface over the table of the enumeration T; it holds no state of its own.
template <typename T> class SmartEnumerator : public EnumeratorInterface {
public:
    const std::string& name() const override { return table().name; }
    const std::string& description() const override { return table().description; }
    const_iterator begin() const override { return table().items.begin(); }
    const_iterator end() const override { return table().items.end(); }
    std::size_t size() const override { return table().items.size(); }

    // The item of a value; 0 or a value past the table give the null item "Null".
    static const EnumeratorItem& item(T value) {
        const auto i = static_cast<std::size_t>(value);
        return i == 0 || i > table().items.size() ? nullItem() : table().items[i - 1];
    }
    // The value of a name, by case-sensitive search; an unknown name gives one past the table.
    static T value(const std::string& name) {
        const auto& items = table().items;
        std::size_t i = 0;
        while (i < items.size() && items[i].name() != name) ++i;
        return static_cast<T>(i + 1);
    }
    // For code that meets a value it has no branch for: ErrorSmartEnum with the enumeration's name.
    [[noreturn]] static void unsupported(const std::string& function, T value);

private:
    static const SmartEnumeratorTable& table() { return smartEnumeratorTable<T>(); }
    static const EnumeratorItem& nullItem();
};

template <> const SmartEnumeratorTable& smartEnumeratorTable<ScalingMode>();
template <> const SmartEnumeratorTable& smartEnumeratorTable<CutsSolution>();
template <> const SmartEnumeratorTable& smartEnumeratorTable<MassBalanceMode>();
template <> const SmartEnumeratorTable& smartEnumeratorTable<FlashMode>();
template <> const SmartEnumeratorTable& smartEnumeratorTable<Direction>();
template <> const SmartEnumeratorTable& smartEnumeratorTable<PhaseType>();
template <> const SmartEnumeratorTable& smartEnumeratorTable<PhaseIndex>();
template <> const SmartEnumeratorTable& smartEnumeratorTable<Category>();

extern template class SmartEnumerator<ScalingMode>;
extern template class SmartEnumerator<CutsSolution>;
extern template class SmartEnumerator<MassBalanceMode>;
extern template class SmartEnumerator<FlashMode>;
extern template class SmartEnumerator<Direction>;
extern template class SmartEnumerator<PhaseType>;
extern template class SmartEnumerator<PhaseIndex>;
extern template class SmartEnumerator<Category>;

} // namespace Tarvo::Utility

#endif
