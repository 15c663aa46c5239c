#include <limits>
#include <optional>

#include <platen/plotstyle.h>
#include "plotstyle/wx_text.h"

bool CCustomLineweightTable::checkLineWeightRange(double& value, bool inches) {
    constexpr double epsilon = std::numeric_limits<float>::epsilon();
    constexpr double maximumMillimetres = 200.0;
    constexpr double maximumInches = 7.874015748031496;

    if (value < epsilon) {
        const bool inside = value >= 0.0;
        value = 0.0;
        return inside;
    }
    const double maximum = inches ? maximumInches : maximumMillimetres;
    if (value < maximum + epsilon) {
        return true;
    }
    value = maximum;
    return false;
}

bool CCustomLineweightTable::checkLineWeightRange(double& value, const wchar_t* text, bool inches) {
    const std::optional<double> typed = plot_style::parseTyped(text);
    if (!typed) {
        return false;
    }
    value = *typed;
    return checkLineWeightRange(value, inches);
}
