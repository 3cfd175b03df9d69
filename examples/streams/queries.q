lload "streams.ddb"
front #10 (from #5) ;
front #5 (add_streams ones (from #1)) ;
front #15 fibs ;
front #20 primes ;
front #5 (each (* #2) (keep even (from #1))) ;
upto_one (collatz #6) ;
$ (upto_one (collatz #27)) ;
