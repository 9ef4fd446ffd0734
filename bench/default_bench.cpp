#include "bench/description.h"

namespace vantrel::bench {
namespace {

constexpr std::string_view kDefaultBench = R"bench(
# A climate chamber under test: supplies, heaters and sensors.
instrument USB0::0xFFFF::0x0020::SB20-0417::INSTR
  identity "Orlane,SB-20,SB20-0417,1.04"
  serial "SB20-0417"
  card 2
  channel 1 VOLT
  channel 2 VOLT
  channel 3 FRES
  channel 4 TEMP PT100 FRTD
  channel 5 TCO K
  channel 6 TCO J
  channel 7 VOLT:AC
  channel 8 FREQ
  channel 9 PER
  channel 10 RES
  channel 11 VOLT
  channel 12 VOLT open
  channel 13 VOLT          # its contacts belong to channel 3
  channel 15 TEMP PT385 RTD
  channel 16 TCO T
  channel 17 VOLT
  channel 18 RES

# A battery pack: sixteen cells and four sensors.
instrument GPIB0::22::INSTR
  identity "Orlane,SB-20,SB20-0422,1.04"
  serial "SB20-0422"
  card 2
  channel 1-16 VOLT
  channel 17-20 TCO K

instrument USB0::0xFFFF::0x0010::SB10-0093::INSTR
  identity "Orlane,SB-10,SB10-0093,1.02"
  serial "SB10-0093"
  card 1
  channel 1 VOLT:AC
  channel 2 FREQ
  channel 3 PER
  channel 4 FRES
  channel 5 RES
  channel 6 TCO K
  channel 7 TEMP PT100 RTD
  channel 8 VOLT

instrument GPIB0::9::INSTR
  identity "Orlane,SB-20,SB20-0008,2.00"
  serial "SB20-0008"
  card 2
  channel 1-4 RES
  channel 5-6 TEMP PT3916 FRTD
  channel 7-8 VOLT
  channel 11-12 RES
  channel 13 RES open
  channel 14 TCO E
  channel 17 VOLT:AC

# A multimeter without a scanner card.
instrument USB0::0xFFFF::0x0000::SB0-1102::INSTR
  identity "Orlane,SB-0,SB0-1102,1.11"
  serial "SB0-1102"
  card 0

# Something on the bus that is not a multimeter.
instrument GPIB0::30::INSTR
  silent
)bench";

}  // namespace

BenchDescription DefaultBench() { return ParseBench(kDefaultBench); }

}  // namespace vantrel::bench
