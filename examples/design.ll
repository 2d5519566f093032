; Logic locations of the example design: where the bits of its nets live.
Revision 3
Bit  6112480 0x00401f80   96 die0 0 Block=X14Y61 Latch=AQ Net=design/region/scale_1/product_reg[0]
Bit  6112511 0x00401f80  127 die0 0 Block=X14Y61 Latch=BQ Net=design/region/scale_1/product_reg[1]
Bit  6112543 0x00401f80  159 die0 0 Block=X14Y61 Latch=CQ Net=design/region/scale_1/product_reg[2]
Bit  6120736 0x00401f82 1952 die0 0 Block=X15Y92 Latch=AQ Net=design/region/scale_1/loop/i_reg[0]
Bit  6120767 0x00401f82 1983 die0 0 Block=X15Y92 Latch=BQ Net=design/region/scale_1/loop/i_reg[1]
Bit  6131200 0x00401f85 2816 die0 0 Block=X15Y94 Latch=AQ Net=design/static/product_reg[0]
Bit  7340032 0x00420010    0 die0 0 Block=M3 Ram=B:BIT0
