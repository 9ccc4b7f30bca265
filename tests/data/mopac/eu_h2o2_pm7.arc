

                     SUMMARY OF  PM7 CALCULATION

                                                       MOPAC v22.0.6 Linux
                                                       Sat Nov 21 18:51:45 2026

           Empirical Formula: H4 O2 Eu  =     7 atoms

 PM7 SPARKLE CHARGE=+3 THREADS=1 GEO-OK
 hydrate



     GEOMETRY OPTIMISED USING EIGENVECTOR FOLLOWING (EF).     
     SCF FIELD WAS ACHIEVED                                   

          HEAT OF FORMATION       =        812.10551 KCAL/MOL =    3397.84946 KJ/MOL
          GRADIENT NORM           =          0.29226          =       0.11046 PER ATOM
          DIPOLE                  =          0.00582 DEBYE   POINT GROUP:  D2d 
          NO. OF FILLED LEVELS    =          8
          CHARGE ON SYSTEM        =         +3
          IONIZATION POTENTIAL    =         28.370662 EV
          HOMO LUMO ENERGIES (EV) =        -28.371-10.685
          MOLECULAR WEIGHT        =        187.9944
          COSMO AREA              =        127.95 SQUARE ANGSTROMS
          COSMO VOLUME            =        119.02 CUBIC ANGSTROMS

          MOLECULAR DIMENSIONS (Angstroms)

            Atom       Atom       Distance
            H     6    H     3     6.34739
            H     4    H     7     2.06600
            H     4    H     6     1.04739
          SCF CALCULATIONS        =         14
          WALL-CLOCK TIME         =      0.117 SECONDS
          COMPUTATION TIME        =      0.031 SECONDS


          FINAL GEOMETRY OBTAINED
* comment
 PM7 SPARKLE CHARGE=+3 THREADS=1 GEO-OK
 hydrate

 Eu    -0.00004313 +1   0.00003846 +1   0.00005832 +1
  O     2.35935574 +1  -0.00000599 +1  -0.00003128 +1
  H     3.12997237 +1   0.74086936 +1  -0.00013084 +1
  H     3.12976596 +1  -0.74103574 +1  -0.00013056 +1
  O    -2.35900398 +1  -0.00004382 +1   0.00005573 +1
  H    -3.13042245 +1  -0.00005354 +1   0.74000468 +1
  H    -3.13018779 +1  -0.00005384 +1  -0.74055677 +1

