// The data file SpecData.xml; of its sections the one with the fittings of double-line pipes is read:
//
//     <SpecData>
//         <DblPipeFittingSpec>
//             <Fitting Name="弯头" Diameter1="100" Diameter2="80">
//                 <Point X="0" Y="0"/>
//                 <Point X="150" Y="0" Z="0"/>
//             </Fitting>
//         </DblPipeFittingSpec>
//     </SpecData>
//
// Diameters are in millimetres, points in drawing units; a missing Z is 0.
#pragma once

namespace qrs::frame {

// Replaces the suite's double-pipe fittings by those of the file, points closer than the tolerance taken as
// one. Without the file, or when it is damaged (one message), the fittings stay as they were. A fitting without
// name, or with something that is no number, is left out with a message.
void readDoublePipeFittings(double tolerance);

}  // namespace qrs::frame
