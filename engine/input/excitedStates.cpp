#include "input/excitedStates_p.h"

#include "input/orbitalTable_p.h"
#include "input/textFields_p.h"

#include <cctype>

namespace {

/// Takes a number and an optional spin letter off the front of @p text; -1 when there is none.
int takeOrbital(std::string_view &text, bool &hasSpin)
{
    std::size_t i = 0;
    while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])))
        ++i;
    const int number = textFields::toInt(text.substr(0, i));
    hasSpin = i < text.size() && std::string_view("abAB").find(text[i]) != text.npos;
    text.remove_prefix(i + (hasSpin ? 1 : 0));
    return i > 0 && number <= OrbitalTable::maximumIndex ? number : -1;
}

} // namespace

void StateTable::addState(double energy, double oscillatorStrength)
{
    ExcitateState state;
    state.energy = energy;
    state.oscillatorStrength = oscillatorStrength;
    states.append(state);
    weights.append(QVector<double>());
}

void StateTable::addExcitation(const Excitation &excitation, double weight)
{
    states.last().configurations << excitation.from << excitation.to;
    weights.last() << weight;
}

bool hasArrow(std::string_view line)
{
    return textFields::contains(line, "->") || textFields::contains(line, "<-");
}

std::optional<Excitation> parseExcitation(std::string_view line)
{
    std::size_t arrow = line.find("->");
    if (arrow == std::string_view::npos)
        arrow = line.find("<-");
    if (arrow == std::string_view::npos)
        return std::nullopt;
    std::string_view left = textFields::trimmed(line.substr(0, arrow));
    while (!left.empty() && left.back() == '-') // "-->"
        left = textFields::trimmed(left.substr(0, left.size() - 1));
    std::string_view right = textFields::trimmed(line.substr(arrow + 2));
    Excitation excitation;
    excitation.from = takeOrbital(left, excitation.hasSpin);
    excitation.to = takeOrbital(right, excitation.hasSpin);
    excitation.rest = right;
    if (!left.empty() || excitation.from < 0 || excitation.to < 0)
        return std::nullopt;
    return excitation;
}
