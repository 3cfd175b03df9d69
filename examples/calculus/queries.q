lload "calculus.ddb"
d (Pow X #3) ;
d (Add (Mul (Num #3) (Pow X #2)) (Mul (Num #5) X)) ;
d (Mul X (Sin X)) ;
d (Cos (Pow X #2)) ;
simp (Add (Num #2) (Mul (Num #1) (Num #4))) ;
value (deriv (Pow X #3)) #r2.0 ;
