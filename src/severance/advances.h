#pragma once
// Advances on severance pay and back pay of earlier years.

namespace ModSwCalm2 {

void ElaboraAnticipazioni();
void ElaboraArretratiAP();

}  // namespace ModSwCalm2
