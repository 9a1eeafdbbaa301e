#pragma once

/// Mass along one direction and what becomes of it [pound s^2/inch, whatever the units of the model].
struct jxDirectionMass
{
    double moving = 0;      ///< on equations that no support holds
    double onSupports = 0;  ///< on equations held by a penalty: it hardly moves
    double lost = 0;        ///< given, but on a degree of freedom without equation
};

/// Course of a frequency run, for summaries.
struct jxFrequencyOutcome
{
    bool bDone = false;
    int massDofs = 0;           ///< equations with mass
    int modes = 0;              ///< solved for
    int vectors = 0;            ///< of the subspace
    int iterations = 0;         ///< subspace iterations, the closing one included
    bool bConverged = false;    ///< every mode within the eigenvalue tolerance
    bool bSturmCheck = false;   ///< the count below was made
    double sturmShift = 0;      ///< squared circular frequency below which eigenvalues are counted [rad^2/s^2]
    int sturmExpected = 0;      ///< modes found below the shift
    int sturmCounted = 0;       ///< eigenvalues that there are below it
    double sturmMissFrom = 0;   ///< where the two differ: they do so from here on ...
    double sturmMissUntil = 0;  ///< ... below here [rad^2/s^2]; 0 where nobody could look
    jxDirectionMass mass[3];    ///< along X, Y, Z
};
