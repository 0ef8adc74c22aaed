# Draws what start_bench --growth prints: kind, number, nanoseconds each, bytes each.
set terminal svg size 900,380 font "sans,12" background "white"
set multiplot layout 1,2
set logscale x 10
set format x "10^{%T}"
set xlabel "number"
set yrange [0:*]
set key bottom right
set grid
of(kind) = sprintf("< grep '^%s' %s", kind, measured)
set title "time for each, ns"
plot of("settings") using 2:3 with linespoints pt 7 title "settings", \
     of("actions") using 2:3 with linespoints pt 5 title "actions"
set title "memory held for each, bytes"
plot of("settings") using 2:4 with linespoints pt 7 title "settings", \
     of("actions") using 2:4 with linespoints pt 5 title "actions"
unset multiplot
