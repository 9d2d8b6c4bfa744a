#ifndef TARVO_PHASES_PCSAFTPARAMETERS_H
#define TARVO_PHASES_PCSAFTPARAMETERS_H

namespace Phase {

// The pure-component parameters of the PC-SAFT equation, process-wide, for at most NC components in the
// order of the component list, and a table of binary interaction parameters. The application sets them;
// the kernel has no defaults of its own (Phase::Pcsaft takes them from its data by the components' names).
class PcsaftParameters {
public:
    static constexpr int NC = 9;

    // Sets the number of components in use and clears the interaction parameters among them.
    static void resize(int nc);
    // Segment number, segment diameter (angstrom) and segment energy over k (K) of component i.
    static void setparameters(int i, const double& m, const double& sigma, const double& epsilon);

    static int ncomp;
    static double m[NC], sigma[NC], epsilon[NC];
    static double kij[NC][NC];
};

} // namespace Phase

#endif
