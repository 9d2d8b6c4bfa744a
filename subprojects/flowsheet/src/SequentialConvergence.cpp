#include <tarvo/flowsheet/FlowSheet.h>
#include <tarvo/flowsheet/SequentialConvergence.h>
#include <tarvo/utility/Log.h>

#include <cmath>

using Tarvo::Utility::CutsSolution;

namespace {
constexpr int verbosityFile = -1;
// Direct steps come first: Wegstein's secant needs two points that the model has settled on.
constexpr int directPasses = 10;
// Passes in a row whose change falls by less than 1% before the convergence counts as stalled.
constexpr int stallingPasses = 11;

bool byPasses(CutsSolution method) {
    return method == CutsSolution::direct || method == CutsSolution::wegstein;
}
} // namespace

int SequentialConvergence::passes_(CutsSolution method, int maximum, int level) {
    int iterations = 0;
    int stalled = 0;
    while (maximum >= 1) {
        sheet_.resetErrors();
        sheet_.pass(Calculatable::sequential, level);
        auto it = sheet_.assignments().begin();
        sheet_.makeSequentialAssembly(it);
        if (iterations < directPasses || method == CutsSolution::direct)
            sheet_.directstep();
        else
            sheet_.wegsteinstep();
        const double last = sheet_.seqErr.toDouble();
        sheet_.seqErr = sheet_.deltaseq();
        TARVO_LOG(2) << " Iter = " << iterations << " Error = " << sheet_.seqErr.toDouble();
        if (sheet_.seqErr < sheet_.seqTol) break;
        if (std::fabs(sheet_.seqErr.toDouble() / last) > 0.99) {
            if (++stalled == stallingPasses) break;
        } else {
            stalled = 0;
        }
        if (sheet_.seqErr.isnan()) break;
        if (++iterations >= maximum) break;
    }
    sheet_.NITER = iterations;
    return stalled;
}

void SequentialConvergence::converge(CutsSolution method, int maximum, int level) {
    if (!byPasses(method)) return;
    const int stalled = passes_(method, maximum, level);
    if (maximum <= sheet_.NITER.value())
        sheet_.reportError("flowsheet sequential convergence failure: maximum iterations reached;");
    if (stalled == stallingPasses)
        sheet_.reportError("flowsheet sequential convergence failure: non decreasing residues;");
    if (sheet_.seqErr.isnan()) sheet_.reportError("flowsheet sequential convergence failure: NaN residue;");
}

void SequentialConvergence::lead(CutsSolution method, int maximum, int level) {
    if (byPasses(method)) passes_(method, maximum, level);
}
