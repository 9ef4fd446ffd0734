"""Four scanners of 10 and 20 channels, as rows 0 to 3 of Connect, and what their plans look like.

Channels are as many as the row at the device's own number has, and pairs are half as many apart: an instrument that is
device 0 or 2 is taken for one of 10 channels, and as device 1 or 3 for one of 20.
"""

# Readings come at once. Each count is that of one sweep as some device, or one that a test asks for.
bench = r"""
pace 1
instrument USB0::0xFFFF::0x0010::A1::INSTR
  identity "Orlane,SB-10,A1,1.02"
  serial "Alpha 10"
  card 1
  channel 1 VOLT:AC
  channel 2 VOLT
  channel 3 FRES
  channel 5 TCO K
  channel 7 VOLT
  channel 8 VOLT          # taken by 3
  counts 5 10 12

instrument GPIB0::8::INSTR
  identity "Orlane,SB-20,B2,1.04"
  serial "Bravo 20"
  card 2
  channel 1 VOLT
  channel 2 FRES
  channel 4 VOLT
  channel 5 RES
  channel 6 FREQ
  channel 7 VOLT:AC
  channel 9 TEMP PT100 FRTD
  channel 10 PER
  channel 11-12 VOLT      # 12 is taken by 2
  channel 14 VOLT
  channel 19-20 VOLT      # 19 is taken by 9
  counts 7 11 12

instrument USB0::0xFFFF::0x0010::C3::INSTR
  identity "Orlane,SB-10,C3,1.02"
  serial "Charlie 10"
  card 3                  # counts as one bank
  channel 1 VOLT
  channel 2 RES
  channel 3 VOLT:AC
  channel 5 TCO T
  channel 6 VOLT
  channel 10 VOLT
  counts 6 12
""" + "".join(rf'  reply "rout:scan:func? {number}" "\"NONE\"\n"' + "\n" for number in range(11, 21)) + r"""
instrument GPIB0::9::INSTR
  identity "Orlane,SB-20,D4,1.04"
  serial "Delta 20"
  card 2
  channel 1 FRES
  channel 3 VOLT
  channel 5 TCO T
  channel 6 VOLT
  channel 11 VOLT         # taken by 1
  channel 13 RES
  channel 20 VOLT
  counts 3 6 12
"""

off = ["NONE"]
alpha = ["ACV", "DCV", "4W", "NONE", "TCOUPL", "NONE", "DCV", "NONE", "NONE", "NONE"]
bravo = ["DCV", "4W", "NONE", "DCV", "2W", "FREQ", "ACV", "NONE", "4W,TEMP", "PERIOD",
         "DCV", "NONE", "NONE", "DCV"] + off * 5 + ["DCV"]
charlie = ["DCV", "2W", "ACV", "NONE", "TCOUPL", "DCV", "NONE", "NONE", "NONE", "DCV"]
delta = ["4W", "NONE", "DCV", "NONE", "TCOUPL", "DCV"] + off * 6 + ["2W"] + off * 6 + ["DCV"]
bravo_of_10 = bravo[:6] + off + bravo[7:10]  # channel 7 is the slave of 2
delta_of_10 = delta[:5] + off * 5  # channel 6 is the slave of 1
