# Bar chart of library/peer ratios (log scale; 1 is parity, 2 the limit we
# hold to); the dots are library/limit, where a limit case exists.
set terminal svg size 1000,800 font "sans,10"
set output outfile
set datafile missing "?"
set style fill solid 0.6
set boxwidth 0.7
set logscale x 2
set xlabel "gvlib time / peer time (bars), gvlib time / limit time (dots)"
set ytics nomirror
set grid xtics
set arrow from 1, graph 0 to 1, graph 1 nohead lc rgb "black"
set arrow from 2, graph 0 to 2, graph 1 nohead lc rgb "red" dt 2
set key bottom right
plot datafile using 3:1:(1):3:($1-0.35):($1+0.35):ytic(2) with boxxyerror title "vs peer", \
     datafile using 4:1 with points pt 7 ps 0.8 lc rgb "blue" title "vs limit"
