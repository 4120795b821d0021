MEVRIGHTS ; What the signed-on user may change. Asked again at every save: a client's word does not count.
 ;
REFUSED(kind) ; Why the user may not change records of a kind: an error reply, empty when the user may
 NEW key
 IF kind="REP" QUIT $$REPRODUCTIVE
 SET key=$SELECT(kind="VIF":"MEVZ PEDIATRIC EDIT",kind="BMSR":"MEVZ PEDIATRIC EDIT",kind="VELD":"MEVZ ELDER CASE EDIT",kind="VAST":"MEVZ ASTHMA EDIT",kind="VTXC":"MEVZ TX CONTRACT EDIT",kind="VER":"MEVZ ER EDIT",1:"")
 IF key="" QUIT ""
 IF $$HOLDS^MEVKEYS("PROVIDER") QUIT ""
 IF $$HOLDS^MEVKEYS(key) QUIT ""
 QUIT "-1^You hold neither the PROVIDER key nor the "_key_" key."
 ;
REPRODUCTIVE() ; Keys and the parameter, personal or by class
 NEW class
 IF $$HOLDS^MEVKEYS("MEVZ VIEW ONLY") QUIT "-1^You hold the MEVZ VIEW ONLY key."
 IF '$$HOLDS^MEVKEYS("PROVIDER"),'$$HOLDS^MEVKEYS("MEVZ REP HIST EDIT") QUIT "-1^You hold neither the PROVIDER key nor the MEVZ REP HIST EDIT key."
 IF $$VALUE^MEVKEYS("MEV DISABLE REP HIST EDITING") QUIT "-1^Editing of the reproductive history is disabled for you."
 SET class=$PIECE(^MEVUSR(user,0),"^",3)
 IF class'="",$GET(^MEVCLS(class,"PAR","MEV DISABLE REP HIST EDITING")) QUIT "-1^Editing of the reproductive history is disabled for your user class."
 QUIT ""
