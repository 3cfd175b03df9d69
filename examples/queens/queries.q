lload "queens.ddb"
queens #4 ;
$ (queens #6) ;
head (queens #7) ;
board #6 (head (queens #6)) ;
