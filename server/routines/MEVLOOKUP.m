MEVLOOKUP ; Searches of tables: by the beginning of the name, by code, by number
 ; Screens arrive as texts, are compared with the known ones, and are never executed.
 ;
DICLKUP ; Call: file ^ text ^^^ most ^ index ^ screen ^^ fields. LINE describes the lines.
 NEW count,file,most,root,screen,search
 SET file=$PIECE(param,"^"),search=$PIECE(param,"^",2),most=$PIECE(param,"^",5),screen=$PIECE(param,"^",7),count=0
 SET root=$SELECT(file?1.7N.1(1".".3N):$$SEARCHED^MEVFILES(file),1:"")
 IF root="" DO NO^MEVSAVE("This file cannot be searched.") QUIT
 IF screen'="",'$$ISKNOWN(screen) DO NO^MEVSAVE("This screen is not known.") QUIT
 IF most'?1.3N!(most>250)!(most<1) SET most=250
 QUIT:$LENGTH(search)>100
 SET search=$$FOLD^MEVNAMEINDEX(search)
 IF file=200!(file=2),search="" QUIT
 DO BYNUMBER,BYCODE,BYNAME
 QUIT
 ;
BYNUMBER ; Adds the entry with this number
 IF search?1N.8N,$DATA(@root@(search,0)) DO TAKE(search)
 QUIT
 ;
BYCODE ; Adds the entries with exactly this code
 NEW ien
 QUIT:search=""
 SET ien=""
 FOR  SET ien=$ORDER(@root@("C",search,ien)) QUIT:ien=""  QUIT:count=most  DO TAKE(ien)
 QUIT
 ;
BYNAME ; Adds the entries whose name begins with the text
 DO WALK^MEVNAMEINDEX(root,"F",search,"TAKE^MEVLOOKUP(ien)")
 QUIT
 ;
TAKE(ien) ; Adds an entry that passes the screen, once
 QUIT:$DATA(search(ien))
 QUIT:'$$PASSES(ien)
 SET search(ien)="",count=count+1,reply(count)=$$LINE(ien)
 QUIT
 ;
LINE(ien) ; number ^ name ^ name ^ code, in another order where the client's columns require it
 NEW code,name,node
 SET node=@root@(ien,0),name=$PIECE(node,"^"),code=$PIECE(node,"^",2)
 IF file=2 QUIT ien_"^"_name_"^"_name_"^"_$PIECE(node,"^",2)_"^"_$$SLASHED^MEVDATE($PIECE(node,"^",3))
 IF file=200 QUIT ien_"^"_name_"^"_name
 IF file=44 QUIT ien_"^"_name_"^"_code
 IF file=9999999.07 QUIT ien_"^^"_code_"^"_name
 IF file=9999999.14 QUIT ien_"^"_name_"^"_name_"^^"_name
 IF file=9999999.88!(file=80.1) QUIT ien_"^"_code_"^"_code_"^"_name
 QUIT ien_"^"_name_"^"_name_"^"_code
 ;
ISKNOWN(screen) ; True for the screens that the panel sends
 QUIT $$SCREENKIND(screen)'=""
 ;
SCREENKIND(screen) ; A screen's condition: ACTIVE (the entry is in use), PROVIDER, LOT; empty if unknown
 IF screen="I $$ACTPRV(Y)" QUIT "PROVIDER"
 IF screen="I $$ACTHLOC(Y)" QUIT "ACTIVE"
 IF screen=".07'=1"!(screen=".03'=1")!(screen=".04'=1")!(screen=".13'=1")!(screen="100'=1") QUIT "ACTIVE"
 IF screen="I $D(~AUTTIML(""C"",Y)),$P($G(~AUTTIMM(Y,0)),U,7)'=1" QUIT "LOT"
 QUIT ""
 ;
PASSES(ien) ; True if the entry passes the screen
 NEW kind
 SET kind=$$SCREENKIND(screen)
 IF kind="PROVIDER" QUIT $DATA(^MEVUSR(ien,"KEY","PROVIDER"))
 IF kind="ACTIVE" QUIT '$GET(@root@(ien,"INACTIVE"))
 IF kind="LOT" QUIT $DATA(^AUTTIML("C",ien))&'$GET(^AUTTIMM(ien,"INACTIVE"))
 QUIT 1
 ;
TABLE(which,layout) ; Searches one of the lists below by code or by a word in the text
 NEW code,count,index,list,search,text
 SET search=$PIECE(param,"^",2),list=$$LISTED^MEVTEXT(which,"MEVLOOKUP"),count=0
 QUIT:$LENGTH(search)>100
 SET search=$$FOLD^MEVNAMEINDEX(search)
 FOR index=1:1:$LENGTH(list,";") DO
 . SET code=$PIECE($PIECE(list,";",index),"="),text=$PIECE($PIECE(list,";",index),"=",2)
 . IF search'="",$EXTRACT(code,1,$LENGTH(search))'=search,$$FOLD^MEVNAMEINDEX(text)'[search QUIT
 . SET count=count+1,reply(count)=index_"^"_text_"^"_text_"^"_code
 . IF layout="DIAGNOSIS" SET reply(count)=text_"^"_index_"^^"_code
 . IF layout="CODES" SET reply(count)=index_"^"_code_"^"_text_"^^"
 QUIT
 ;
ICDLKUP ; Calls: diagnoses by code or text; text ^ number ^^ code
 DO TABLE("DIAGNOSES","DIAGNOSIS")
 QUIT
CPTLKUP ; Call: procedures
 DO TABLE("PROCEDURES","")
 QUIT
OTHCATS ; Call: categories of procedures
 DO TABLE("CATEGORIES","")
 QUIT
CMLKUP ; Call: transaction codes; number ^ code ^ description ^ CAN ^ class
 DO TABLE("TRANSACTIONS","CODES")
 QUIT
DIAGNOSES ;
 ;;J45.20=ASTHMA, MILD INTERMITTENT;J45.30=ASTHMA, MILD PERSISTENT;J45.40=ASTHMA, MODERATE PERSISTENT
 ;;E11.9=DIABETES, TYPE 2;I10=HYPERTENSION;Z34.90=PRENATAL CARE
PROCEDURES ;
 ;;94010=SPIROMETRY;93000=ELECTROCARDIOGRAM;90471=IMMUNIZATION ADMINISTRATION;99213=OFFICE VISIT
CATEGORIES ;
 ;;1=OFFICE VISITS;2=LABORATORY;3=RADIOLOGY;4=THERAPIES
TRANSACTIONS ;
 ;;T100=CLINIC VISIT;T200=TELEPHONE CONTACT;T300=HOME VISIT
