#pragma once

/// Design moments of an orthotropic mesh for the bending and twisting moments of a plate, orthotropy factor 1.
///
/// The top rule serves positive moments: mx = Mx + |Mxy|, my = My + |Mxy|. Where one of them would be negative it is 0
/// and the other one carries the twist alone: my = My + Mxy^2 / |Mx|, likewise in x; what is still negative is 0.
/// The bottom rule is its mirror image for negative moments: mx = Mx - |Mxy| and so on, never above 0.
/// Both make sure that the resisting moment mx cos^2 a + my sin^2 a is at least the acting one in every direction a.
/// @param mx, my        out: design moments [moment/length]
/// @param Mx, My, Mxy   acting moments [moment/length]
/// Source: R. H. Wood, The reinforcement of slabs in accordance with a pre-determined field of moments, Concrete 2
/// (1968) 69-76, with the discussion by G. S. T. Armer, 319-320.
void CalcPlateTopMu1(double& mx, double& my, double Mx, double My, double Mxy);
/// The bottom rule; parameters as above, results never above 0.
void CalcPlateBotMu1(double& mx, double& my, double Mx, double My, double Mxy);
