#include "FrameRates.h"

#include "NumberText.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

enum class Precision { Single, Double };

struct FrameRate
{
    QString text;
    double multiplier;
    Precision precision;
};

const std::array<FrameRate, 9> &frameRates()
{
    static const std::array<FrameRate, 9> rates = {{{u"15"_s, 15.0, Precision::Single},
                                                    {u"23.98"_s, 23.98, Precision::Double},
                                                    {u"24"_s, 24.0, Precision::Single},
                                                    {u"25"_s, 25.0, Precision::Single},
                                                    {u"29.97"_s, 29.97, Precision::Double},
                                                    {u"30"_s, 30.0, Precision::Single},
                                                    {u"50"_s, 50.0, Precision::Single},
                                                    {u"59.94"_s, 59.94, Precision::Double},
                                                    {u"60"_s, 60.0, Precision::Single}}};
    return rates;
}

float frameCount(float seconds, const FrameRate &rate)
{
    if (rate.precision == Precision::Single)
        return seconds * static_cast<float>(rate.multiplier);
    return static_cast<float>(static_cast<double>(seconds) * rate.multiplier);
}

} // namespace

std::optional<ConformedRate> conformedRate(int index, const QString &durationText)
{
    if (index < 1 || index > static_cast<int>(frameRates().size()))
        return std::nullopt;
    const FrameRate &rate = frameRates().at(static_cast<std::size_t>(index - 1));
    const float frames = frameCount(leadingNumber(durationText), rate);
    return ConformedRate{rate.text, sevenDigitsText(static_cast<double>(frames))};
}
