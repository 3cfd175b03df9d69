lload "solutions.ddb"
square #7 ;
square #-3 ;
biggest #1 #9 #4 ;
biggest #-5 #-2 #-7 ;
darker Light ;
map darker [Middle Dark] ;
count_of #2 [#1 #2 #3 #2] ;
count_of "a" nil ;
evens [#1 #2 #3 #4] ;
evens nil ;
map fib [#0 #1 #2 #10] ;
palindrome "level" ;
palindrome "lever" ;
sum_squares #3 ;
sum_squares #1000 ;
in_order (grow #2 (grow #3 (grow #1 Empty))) ;
front #5 (powers #2) ;
