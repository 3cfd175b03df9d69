lload "route.ddb"
route ;
$ route ;
draw ;
