#include "levels/levelNames_p.h"

#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <QMap>
#include <QRegularExpression>

#include <algorithm>

using LanqorSpectroscopicTermUtil::SpectroscopicTerm;
using LanqorSpectroscopicTermUtil::termFromLabel;
using LanqorSpectroscopicTermUtil::textOfJ;

namespace freeIon {

namespace {

constexpr double smallestShare = 0.1; // of a term after which a level may be named

/// Shares by multiplicity and letter, "2H"; with ordinals also "2H(2)".
QMap<QString, double> sharesOf(const MixedState &state)
{
    QMap<QString, double> shares;
    for (const CoeffAndLabel &component : state.components) {
        const double share = component.coefficient * component.coefficient;
        const SpectroscopicTerm term = termFromLabel(component.label, true);
        const QString name = component.label.left(2);
        shares[name] += share;
        if (term.termIndex > 0)
            shares[name + QStringLiteral("(%1)").arg(term.termIndex)] += share;
    }
    return shares;
}

QString leadingTerm(const QMap<QString, double> &shares)
{
    QString leading;
    for (auto share = shares.begin(); share != shares.end(); ++share)
        if (share.key().size() == 2 && share.value() > shares.value(leading, 0.0))
            leading = share.key();
    return leading;
}

} // namespace

QString leadingName(const MixedState &state)
{
    return leadingTerm(sharesOf(state)) + textOfJ(termFromLabel(state.label, true).J);
}

QVector<int> findLevels(const QString &name, const QVector<MixedState> &states)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d[A-Z])(\\(\\d\\))?(\\d+(?:/2|\\.5)?)$"));
    const QRegularExpressionMatch match = form.match(name.trimmed());
    double J = 0.0;
    if (!match.hasMatch() || !LanqorSpectroscopicTermUtil::parseJ(match.captured(3), J))
        return {};
    const QString term = match.captured(1) + match.captured(2);
    enum Likelihood { Bearer, Leading, Present, None };
    QVector<int> found[None];
    for (int i = 0; i < states.size(); ++i) {
        const MixedState &state = states.at(i);
        const SpectroscopicTerm named = termFromLabel(state.label, true);
        if (named.J != J)
            continue;
        const QString bears =
            state.label.left(2) +
            (named.termIndex > 0 ? QStringLiteral("(%1)").arg(named.termIndex) : QString());
        const QMap<QString, double> shares = sharesOf(state);
        Likelihood likelihood = None;
        if (bears == term)
            likelihood = Bearer;
        else if (leadingTerm(shares) == term)
            likelihood = Leading;
        else if (shares.value(term, 0.0) >= smallestShare)
            likelihood = Present;
        if (likelihood != None)
            found[likelihood].append(i + 1);
    }
    return found[Bearer] + found[Leading] + found[Present];
}

} // namespace freeIon
